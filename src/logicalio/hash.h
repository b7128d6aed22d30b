#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace VelDB {

/// A 32-bit content fingerprint: four 8-bit Pearson hashes side by side, which differ in their
/// first step only. Nothing separates the values fed: "ab" then "c" gives what "abc" gives.
/// Numbers are fed as their bytes, the most significant first; of a 64-bit number the low word
/// comes before the high word. An untouched fingerprint is 0.
class Hash {
 public:
  Hash() = default;
  virtual ~Hash() = default;

  // The forms of `begin` and `update` with numbers are defined for other programs: conversions hash
  // numbers by `hashAdd`.

  /// Starts anew over the bytes; false, and nothing changed, when there are none.
  bool begin(std::string_view bytes);
  bool begin(std::uint32_t value);
  bool begin(std::uint64_t value);

  /// Goes on with more bytes.
  void update(std::string_view bytes);
  void update(std::uint32_t value);
  void update(std::uint64_t value);

  /// Begins with the first value that has bytes and goes on with those after it.
  void hashAdd(std::string_view text);
  void hashAdd(std::uint32_t value);
  void hashAdd(std::uint64_t value);

  /// The first hash in the highest eight bits.
  [[nodiscard]] std::uint32_t value() const;

 private:
  std::array<std::uint8_t, 4> lanes_{};
  bool started_ = false;
};

}  // namespace VelDB
