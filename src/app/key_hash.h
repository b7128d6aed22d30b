#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// How the keys of all hash tables are hashed. The hashes are those of one run, keyed by a secret
// that the kernel gives it: nobody can make a file whose keys collide and cost the square of its
// size. No output may depend on them, nor on the order of a table.

namespace quenfold {

std::uint32_t hashOf(std::string_view text);
std::uint32_t hashOf(std::int32_t number);

/// For the standard library's tables.
struct TextHash {
  std::size_t operator()(std::string_view text) const { return hashOf(text); }
};

}  // namespace quenfold
