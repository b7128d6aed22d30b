#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quenfold::unpacking {

/// A pattern may pad its number to at most this many characters, all its places together.
inline constexpr std::uint64_t kMaxPatternWidth = 4096;

/// The pattern with the port number as its one argument. Throws the formatter's error for stray
/// braces.
std::string formatPort(const std::string& pattern, std::int32_t number);

/// A number of bytes that no port from `first` to `last` exceeds with this pattern, whether it is
/// well-formed or not; for patterns without a colon in their places the length of the longest.
/// Throws a length error "port pattern too wide: more than 4096" for the sum of its widths.
std::uint64_t longestPortText(std::string_view pattern, std::int32_t first, std::int32_t last);

/// The characters of the longest decimal number from `first` to `last`.
std::uint64_t longestNumber(std::int32_t first, std::int32_t last);

}  // namespace quenfold::unpacking
