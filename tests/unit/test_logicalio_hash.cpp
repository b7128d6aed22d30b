#include <gtest/gtest.h>

#include <set>
#include <string>
#include <type_traits>

#include "logicalio/hash.h"

namespace VelDB {
namespace {

std::uint32_t fingerprintOf(std::string_view text) {
  Hash hash;
  hash.begin(text);
  return hash.value();
}

TEST(Hash, IsZeroWhenFresh) { EXPECT_EQ(Hash().value(), 0U); }

TEST(Hash, BeginOverNothingChangesNothing) {
  Hash hash;
  EXPECT_FALSE(hash.begin(""));
  EXPECT_EQ(hash.value(), 0U);
  EXPECT_TRUE(hash.begin("A"));
  EXPECT_FALSE(hash.begin(""));
  EXPECT_EQ(hash.value(), 4215536289U);
}

TEST(Hash, UpdateWithNothingChangesNothing) {
  Hash hash;
  hash.begin("A");
  hash.update("");
  EXPECT_EQ(hash.value(), 4215536289U);
}

TEST(Hash, OneByteGivesFourNeighboursOfTheTable) {
  EXPECT_EQ(fingerprintOf("A"), 0xFB43FAA1U);
  EXPECT_EQ(fingerprintOf("A"), 4215536289U);
}

TEST(Hash, LaneNumbersWrapAroundTheByte) { EXPECT_EQ(fingerprintOf("\xff"), 0xEF620655U); }

TEST(Hash, TakesBytesAsUnsigned) { EXPECT_EQ(fingerprintOf("\xc3\xa9"), 1929547409U); }

TEST(Hash, HashesLongerTexts) {
  EXPECT_EQ(fingerprintOf("abc"), 2887111950U);
  EXPECT_EQ(fingerprintOf("The quick brown fox jumps over the lazy dog"), 1929600552U);
}

TEST(Hash, TableIsAPermutation) {
  std::set<std::uint32_t> lanes;
  for (int byte = 0; byte < 256; ++byte) {
    lanes.insert(fingerprintOf(std::string(1, static_cast<char>(byte))) >> 24U);
  }
  EXPECT_EQ(lanes.size(), 256U);
}

TEST(Hash, BeginStartsAnew) {
  Hash hash;
  hash.begin("something");
  hash.begin("abc");
  EXPECT_EQ(hash.value(), 2887111950U);
}

TEST(Hash, FeedsNumbersMostSignificantByteFirst) {
  Hash number;
  EXPECT_TRUE(number.begin(std::uint32_t{1}));
  EXPECT_EQ(number.value(), fingerprintOf(std::string_view("\0\0\0\1", 4)));
  EXPECT_EQ(number.value(), 453165582U);
  number.update(std::uint32_t{0xA1B2C3D4});
  EXPECT_EQ(number.value(), fingerprintOf(std::string_view("\0\0\0\1\xa1\xb2\xc3\xd4", 8)));
}

TEST(Hash, FeedsTheLowWordOf64BitsFirst) {
  Hash number;
  EXPECT_TRUE(number.begin(std::uint64_t{0x0102030405060708}));
  EXPECT_EQ(number.value(), fingerprintOf("\5\6\7\x8\1\2\3\4"));
  EXPECT_EQ(number.value(), 338911415U);
  number.update(std::uint64_t{0x0102030405060708});
  EXPECT_EQ(number.value(), fingerprintOf("\5\6\7\x8\1\2\3\4\5\6\7\x8\1\2\3\4"));
}

TEST(HashAdd, SeparatesNothing) {
  Hash parts;
  parts.hashAdd("ab");
  parts.hashAdd("c");
  EXPECT_EQ(parts.value(), fingerprintOf("abc"));
}

TEST(HashAdd, StartsWithTheFirstTextThatHasBytes) {
  Hash hash;
  hash.hashAdd("");
  EXPECT_EQ(hash.value(), 0U);
  hash.hashAdd("A");
  EXPECT_EQ(hash.value(), 4215536289U);
}

TEST(HashAdd, MixesTextsAndNumbers) {
  Hash mixed;
  mixed.hashAdd("ab");
  mixed.hashAdd(std::uint32_t{7});
  mixed.hashAdd(std::uint64_t{9});
  EXPECT_EQ(mixed.value(), 1535032980U);
  Hash wide;
  wide.hashAdd(std::uint64_t{1});
  wide.hashAdd(std::uint64_t{0xFFFFFFFFFFFFFFFF});
  EXPECT_EQ(wide.value(), 2010491842U);
}

TEST(Hash, MayBeDerivedFrom) { EXPECT_TRUE(std::has_virtual_destructor_v<Hash>); }

}  // namespace
}  // namespace VelDB
