#pragma once

#include <endian.h>

#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// The bulk of every JSON text is string characters that stand for themselves. They are found and
// passed a machine word at a time. Which characters these are is decided here, for the parser and
// for all writers.

namespace quenfold {

using ScanWord = std::size_t;

/// How many bytes behind the zero byte that ends a text `plainRunEnd` may read.
inline constexpr std::size_t kScanPadding = sizeof(ScanWord) - 1;

constexpr ScanWord inEveryByte(unsigned char value) { return ~ScanWord{0} / 255 * value; }

/// Marks (0x80) the lowest byte that is below the limit, which is at most 128; perhaps also bytes
/// above it, none when there is no such byte.
constexpr ScanWord bytesBelow(ScanWord word, unsigned char limit) {
  return (word - inEveryByte(limit)) & ~word & inEveryByte(0x80);
}

/// Marks in that way the characters that end a run: control characters, quotation marks and
/// backslashes. With bit 1 flipped the quotation mark, 0x22,
/// comes right behind the control characters, which stay among themselves.
constexpr ScanWord plainRunEnds(ScanWord word) {
  return bytesBelow(word ^ inEveryByte(0x02), 0x21) | bytesBelow(word ^ inEveryByte('\\'), 1);
}

inline std::uint64_t firstByteLowest(std::uint64_t word) { return le64toh(word); }
inline std::uint32_t firstByteLowest(std::uint32_t word) { return le32toh(word); }

/// The next characters, the first of them lowest.
inline ScanWord loadWord(const char* text) {
  ScanWord word = 0;
  std::memcpy(&word, text, sizeof word);
  return firstByteLowest(word);
}

/// The first character from here on that ends the run; a zero byte does.
inline const char* plainRunEnd(const char* text) {
  ScanWord ends = plainRunEnds(loadWord(text));
  while (ends == 0) {
    text += sizeof ends;
    ends = plainRunEnds(loadWord(text));
  }
  return text + __builtin_ctzll(ends) / CHAR_BIT;
}

/// How many characters the run at the beginning of a text has. Reads nothing behind the text.
inline std::size_t plainRunLength(std::string_view text) {
  std::size_t length = 0;
  for (; text.size() - length >= sizeof(ScanWord); length += sizeof(ScanWord)) {
    const ScanWord ends = plainRunEnds(loadWord(text.data() + length));
    if (ends != 0) {
      return length + static_cast<std::size_t>(__builtin_ctzll(ends)) / CHAR_BIT;
    }
  }
  std::array<char, sizeof(ScanWord)> rest{};  // zero bytes behind the text end the run as well
  text.copy(rest.data(), rest.size(), length);
  const ScanWord ends = plainRunEnds(loadWord(rest.data()));
  return length + static_cast<std::size_t>(__builtin_ctzll(ends)) / CHAR_BIT;
}

}  // namespace quenfold
