#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quenfold {

inline bool beginsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

/// The pieces between the delimiters, empty ones included: "a,b," gives "a", "b" and "", and ""
/// gives one empty piece.
std::vector<std::string> split(std::string_view text, char delimiter);

/// The positions [begin, end) of a piece in the text it was cut from.
struct TokenRange {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// The same cuts as `split`, as positions and for at most five pieces; unused ranges are empty.
/// Throws "split_itr - too many tokens." at the fifth delimiter. Defined for other programs: no
/// conversion calls it.
std::array<TokenRange, 5> split_itr(  // NOLINT(readability-identifier-naming): a name of long use
    std::string_view text, char delimiter);

/// Number parsing as the C library's strtoul and strtol do it where long has 32 bits, so that every
/// host agrees with the controller: leading blanks, a sign and (bases 16 and 0) a "0x" are
/// accepted, what follows the digits is ignored. `out` is always set: 0 without digits, the limit
/// on overflow. True when digits were found and the value fits. `base` is 2 to 36, or 0 to tell by
/// the prefix. A negative text wraps when unsigned: "-1" is 4294967295.
bool parseUnsigned(std::string_view str, std::uint32_t& out, int base);
bool parseSigned(std::string_view str, std::int32_t& out, int base);

/// The same numbers and the same `out` for who reads on behind them, as sscanf does: the characters
/// that the number takes up, blanks, sign and digits beyond the limit included; 0 without digits.
std::size_t scanUnsigned(std::string_view str, std::uint32_t& out, int base);
std::size_t scanSigned(std::string_view str, std::int32_t& out, int base);

/// `parseUnsigned` in base 10 of a text with nothing after the digits.
bool parseWholeUnsigned(std::string_view str, std::uint32_t& out);

}  // namespace quenfold
