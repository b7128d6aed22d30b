#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "app/key_hash.h"
#include "support/colliding_keys.h"

namespace quenfold {
namespace {

constexpr std::size_t kKeys = 500;
constexpr std::size_t kUsualCrowd = 16;  // 2000 or fewer in 4096 places: never

template <typename Key>
std::vector<std::uint32_t> hashesOf(const std::vector<Key>& keys) {
  std::vector<std::uint32_t> hashes;
  hashes.reserve(keys.size());
  for (const Key& key : keys) {
    hashes.push_back(quenfold::hashOf(key));
  }
  return hashes;
}

TEST(KeyHash, SpreadsTextsOfOneUsualHash) {
  const std::vector<std::string> texts = test::WordsOfOneHash::make(kKeys);
  ASSERT_EQ(std::set<std::string>(texts.begin(), texts.end()).size(), kKeys);
  if (sizeof(std::size_t) == 8) {
    for (const std::string& text : texts) {
      ASSERT_EQ(std::hash<std::string>()(text), std::hash<std::string>()(texts.front()));
    }
  }
  EXPECT_LE(test::largestCrowd(hashesOf(texts)), kUsualCrowd);
}

TEST(KeyHash, SpreadsNumbersThatTheGoldenRatioPutsSideBySide) {
  const std::vector<std::int32_t> numbers = test::numbersSideBySide(kKeys);
  std::set<std::uint64_t> upperBits;
  for (const std::int32_t number : numbers) {
    upperBits.insert((static_cast<std::uint64_t>(number) * 0x9E3779B97F4A7C15) >> 56U);
  }
  ASSERT_EQ(upperBits.size(), 1U);
  EXPECT_LE(test::largestCrowd(hashesOf(numbers)), kUsualCrowd);
}

TEST(KeyHash, SpreadsRegularNumbers) {
  std::vector<std::int32_t> numbers;
  numbers.reserve(2000);
  for (std::int32_t number = -1000; number < 1000; ++number) {
    numbers.push_back(number);
  }
  EXPECT_LE(test::largestCrowd(hashesOf(numbers)), kUsualCrowd);
}

TEST(KeyHash, IsThatOfTheBytes) {
  const std::string text = "F1.A.in[1].t.ch1";
  EXPECT_EQ(quenfold::hashOf(std::string_view(text)),
            quenfold::hashOf(std::string_view(std::string(text))));
  EXPECT_EQ(TextHash()(text), quenfold::hashOf(std::string_view(text)));
  EXPECT_EQ(quenfold::hashOf(std::string_view("a\0b", 3)),
            quenfold::hashOf(std::string_view("a\0b", 3)));
  EXPECT_NE(quenfold::hashOf(std::string_view("a\0b", 3)), quenfold::hashOf(std::string_view("a")));
}

}  // namespace
}  // namespace quenfold
