#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

/// Keys as somebody would choose them who knows a hash without a secret and wants every search in a
/// table to go through all of it.
namespace quenfold::test {

/// The library's std::hash on 64-bit hosts takes a text of two words to
///   finish(((start ^ scramble(first)) * kFactor ^ scramble(second)) * kFactor)
/// and `scramble` can be undone: for any first word there is a second that leads to the same end.
class WordsOfOneHash {
 public:
  /// All are distinct, 16 characters long and plain ASCII that no JSON escapes.
  static std::vector<std::string> make(std::size_t count) {
    std::vector<std::string> texts;
    texts.reserve(count);
    for (std::uint64_t number = 0; texts.size() < count; ++number) {
      const std::uint64_t first = wordOfLetters(number);
      const std::uint64_t second = unscramble(kEnd ^ (kStart ^ scramble(first)) * kFactor);
      if (isPlain(second)) {
        texts.push_back(bytesOf(first) + bytesOf(second));
      }
    }
    return texts;
  }

 private:
  static constexpr std::uint64_t kFactor = 0xC6A4A7935BD1E995;
  static constexpr std::uint64_t kInverse = 0x5F7A0EA7E59B19BD;
  static constexpr std::uint64_t kStart = 0xC70F6907 ^ (16 * kFactor);
  static constexpr std::uint64_t kEnd = 0x123456789ABCDEF0;  // any
  static_assert(kFactor * kInverse == 1);

  static constexpr std::uint64_t fold(std::uint64_t word) { return word ^ (word >> 47U); }
  static constexpr std::uint64_t scramble(std::uint64_t word) {
    return fold(word * kFactor) * kFactor;
  }
  static constexpr std::uint64_t unscramble(std::uint64_t word) {
    return fold(word * kInverse) * kInverse;
  }
  static constexpr std::uint64_t wordOfLetters(std::uint64_t number) {
    std::uint64_t word = 0;
    for (unsigned shift = 0; shift < 64; shift += 8, number /= 16) {
      word |= ('a' + number % 16) << shift;
    }
    return word;
  }
  static std::string bytesOf(std::uint64_t word) {
    std::string bytes(sizeof word, '\0');
    std::memcpy(bytes.data(), &word, sizeof word);
    return bytes;
  }
  static constexpr bool isPlain(std::uint64_t word) {
    for (unsigned byteNumber = 0; byteNumber < 8; ++byteNumber, word >>= 8U) {
      const std::uint64_t byte = word & 0xFFU;
      if (byte < ' ' || byte > '~' || byte == '"' || byte == '\\') {
        return false;
      }
    }
    return true;
  }
};

/// Distinct numbers whose products by the golden ratio, a usual way to spread them, have the same
/// upper eight bits. At most 2000.
inline std::vector<std::int32_t> numbersSideBySide(std::size_t count) {
  constexpr std::int32_t kFibonacci = 832040;  // times the ratio it is nearly a whole number
  std::vector<std::int32_t> numbers;
  numbers.reserve(count);
  for (std::size_t i = 1; i <= count; ++i) {
    numbers.push_back(static_cast<std::int32_t>(i) * kFibonacci);
  }
  return numbers;
}

/// How many of the hashes lead to the same one of 4096 places, at most.
inline std::size_t largestCrowd(const std::vector<std::uint32_t>& hashes) {
  std::array<std::size_t, 4096> places{};
  for (const std::uint32_t hash : hashes) {
    ++places.at(hash >> 20U);
  }
  return *std::max_element(places.begin(), places.end());
}

}  // namespace quenfold::test
