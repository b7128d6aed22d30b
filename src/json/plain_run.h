#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

// The bulk of every JSON text is string characters that stand for themselves. They are found and
// passed a machine word at a time, or sixteen bytes where the processor has them for certain.

namespace quenfold {

using ScanWord = std::size_t;

/// How many bytes behind the zero byte that ends a text `plainRunEnd` may read.
inline constexpr std::size_t kScanPadding = 15;

constexpr ScanWord inEveryByte(unsigned char value) { return ~ScanWord{0} / 255 * value; }

/// Whether a character ends a run: a control character, a quotation mark or a backslash.
constexpr bool endsPlainRun(char character) {
  return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\';
}

/// Marks (0x80) the lowest byte that is below the limit, which is at most 128; perhaps also bytes
/// above it, none when there is no such byte.
constexpr ScanWord bytesBelow(ScanWord word, unsigned char limit) {
  return (word - inEveryByte(limit)) & ~word & inEveryByte(0x80);
}

/// Marks in that way the characters that end a run. With bit 1 flipped the quotation mark, 0x22,
/// comes right behind the control characters, which stay among themselves.
constexpr ScanWord plainRunEnds(ScanWord word) {
  return bytesBelow(word ^ inEveryByte(0x02), 0x21) | bytesBelow(word ^ inEveryByte('\\'), 1);
}

/// The next characters, the first of them lowest.
inline ScanWord loadWord(const char* text) {
  ScanWord word = 0;
  std::memcpy(&word, text, sizeof word);
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  word = sizeof word == 8 ? __builtin_bswap64(word) : __builtin_bswap32(word);
#endif
  return word;
}

/// The first character from here on that ends the run; a zero byte does.
inline const char* plainRunEndByWords(const char* text) {
  ScanWord ends = plainRunEnds(loadWord(text));
  while (ends == 0) {
    text += sizeof ends;
    ends = plainRunEnds(loadWord(text));
  }
  return text + __builtin_ctzll(ends) / 8;
}

#ifdef __SSE2__
/// As `plainRunEnds` for sixteen characters, a bit for each.
inline unsigned plainRunEndsOf16(const char* text) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  const __m128i flipped = _mm_xor_si128(bytes, _mm_set1_epi8(0x02));
  const __m128i isLow = _mm_cmpeq_epi8(_mm_min_epu8(flipped, _mm_set1_epi8(0x20)), flipped);
  const __m128i isBackslash = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(isLow, isBackslash)));
}

inline const char* plainRunEnd(const char* text) {
  unsigned ends = plainRunEndsOf16(text);
  while (ends == 0) {
    text += sizeof(__m128i);
    ends = plainRunEndsOf16(text);
  }
  return text + __builtin_ctz(ends);
}
#else
inline const char* plainRunEnd(const char* text) { return plainRunEndByWords(text); }
#endif

/// Whether all of the text is one run. Reads nothing behind it.
inline bool isPlainRun(std::string_view text) {
  while (text.size() >= sizeof(ScanWord)) {
    if (plainRunEnds(loadWord(text.data())) != 0) {
      return false;
    }
    text.remove_prefix(sizeof(ScanWord));
  }
  return std::none_of(text.begin(), text.end(), endsPlainRun);
}

}  // namespace quenfold
