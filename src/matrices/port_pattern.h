#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quenfold::unpacking {

/// A pattern may pad its number to at most this many characters, all its places together.
inline constexpr std::uint64_t kMaxPatternWidth = 4096;

/// A format pattern with the port number as its one argument, taken apart once for many ports:
/// text, text around one "{}", or what only the formatter understands. Views the pattern's text.
struct PortPattern {
  enum class Kind { kText, kNumber, kFormat };

  Kind kind = Kind::kText;
  std::string_view front;   // before the number
  std::string_view back;    // behind it
  std::string_view format;  // all of it, instead of the two
};

PortPattern splitPattern(std::string_view text);

/// Writes what stands between the pattern's front and back, never beyond `limit`, and returns its
/// end. Allocates nothing unless it fails. Throws the formatter's error for stray braces, and a
/// length error "port name too long" for what does not fit.
char* printPort(const PortPattern& pattern, std::int32_t port, char* begin, char* limit);

/// A number of bytes that no port from `first` to `last` exceeds with this pattern, whether it is
/// well-formed or not; for patterns without a colon in their places the length of the longest.
/// Throws a length error "port pattern too wide: more than 4096" for the sum of its widths.
std::uint64_t longestPortText(std::string_view pattern, std::int32_t first, std::int32_t last);

/// The characters of the longest decimal number from `first` to `last`.
std::uint64_t longestNumber(std::int32_t first, std::int32_t last);

}  // namespace quenfold::unpacking
