#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "support/scratch_path.h"

namespace quenfold::properties {

/// The seeds to try, of which a build tries a few.
struct Seeds {
  std::uint32_t first = 1;
  std::uint32_t count = 0;
  bool enough = true;  // for everything that may happen to have happened
};

/// As QUENFOLD_PROPERTY_FIRST and QUENFOLD_PROPERTY_SEEDS say; otherwise from 1, so many.
Seeds seedsToTry(std::uint32_t count);

void writeBytes(const std::string& path, const std::string& bytes);

/// Writes a made-up legacy database into the folder, the same for the same seed.
void writeLegacy(const std::string& folder, std::uint32_t seed);

/// Standard error goes nowhere as long as this lives.
class Hush {
 public:
  Hush();
  ~Hush();
  Hush(const Hush&) = delete;
  Hush& operator=(const Hush&) = delete;

 private:
  std::streambuf* told_;
};

/// The runs of `quenfold` that pack the whole legacy database. A table that it does not pack leaves
/// no file.
void packWithQuenfold(const std::string& legacy, const std::string& packed);

/// The runs of `quenfold` that unpack all. Throws what they throw.
void unpackWithQuenfold(const std::string& packed, const std::string& legacy);

}  // namespace quenfold::properties
