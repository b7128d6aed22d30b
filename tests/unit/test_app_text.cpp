#include <gtest/gtest.h>

#include "app/text.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

using Pieces = std::vector<std::string>;

TEST(Split, KeepsEmptyPieces) {
  EXPECT_EQ(split("a,,b", ','), (Pieces{"a", "", "b"}));
  EXPECT_EQ(split("a,b,", ','), (Pieces{"a", "b", ""}));
  EXPECT_EQ(split(",a", ','), (Pieces{"", "a"}));
  EXPECT_EQ(split("", ','), (Pieces{""}));
  EXPECT_EQ(split("no delimiter", ','), (Pieces{"no delimiter"}));
}

TEST(SplitItr, GivesFiveTokens) {
  const std::string_view text = "a.bb..d.e";
  const auto tokens = split_itr(text, '.');
  Pieces pieces;
  for (const TokenRange& token : tokens) {
    pieces.emplace_back(text.substr(token.begin, token.end - token.begin));
  }
  EXPECT_EQ(pieces, (Pieces{"a", "bb", "", "d", "e"}));
}

TEST(SplitItr, LeavesUnusedRangesEmpty) {
  const auto tokens = split_itr("ab.c", '.');
  EXPECT_EQ(tokens[1].begin, 3U);
  EXPECT_EQ(tokens[1].end, 4U);
  for (std::size_t i = 2; i < tokens.size(); ++i) {
    EXPECT_EQ(tokens.at(i).begin, tokens.at(i).end) << i;
  }
}

TEST(SplitItr, RejectsASixthToken) {
  EXPECT_EQ(test::messageOf([] { split_itr("a.b.c.d.e.f", '.'); }), "split_itr - too many tokens.");
  EXPECT_EQ(test::messageOf([] { split_itr("a.b.c.d.e.", '.'); }), "split_itr - too many tokens.");
}

struct UnsignedCase {
  const char* text;
  int base;
  bool ok;
  std::uint32_t value;
};

class ParseUnsigned : public testing::TestWithParam<UnsignedCase> {};

TEST_P(ParseUnsigned, AgreesWithA32BitHost) {
  std::uint32_t value = 77;
  EXPECT_EQ(parseUnsigned(GetParam().text, value, GetParam().base), GetParam().ok);
  EXPECT_EQ(value, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ParseUnsigned,
    testing::Values(UnsignedCase{"12x", 10, true, 12}, UnsignedCase{"x", 10, false, 0},
                    UnsignedCase{"", 10, false, 0}, UnsignedCase{" \t\n\v\f\r7", 10, true, 7},
                    UnsignedCase{"   ", 10, false, 0}, UnsignedCase{"+5", 10, true, 5},
                    UnsignedCase{"+-5", 10, false, 0}, UnsignedCase{"-", 10, false, 0},
                    UnsignedCase{"-1", 10, true, 4294967295U},
                    UnsignedCase{"-4294967295", 10, true, 1},
                    UnsignedCase{"-4294967296", 10, false, 4294967295U},
                    UnsignedCase{"4294967295", 10, true, 4294967295U},
                    UnsignedCase{"4294967296", 10, false, 4294967295U},
                    UnsignedCase{"99999999999999999999999", 10, false, 4294967295U},
                    UnsignedCase{"0x1F", 16, true, 31}, UnsignedCase{"ffg", 16, true, 255},
                    UnsignedCase{"0xg", 16, true, 0}, UnsignedCase{"0x1F", 10, true, 0},
                    UnsignedCase{"0X1f", 0, true, 31}, UnsignedCase{"017", 0, true, 15},
                    UnsignedCase{"17", 0, true, 17}, UnsignedCase{"-", 0, false, 0},
                    UnsignedCase{"0xA", 16, true, 10}, UnsignedCase{"0xF", 16, true, 15},
                    UnsignedCase{"0xa", 16, true, 10}, UnsignedCase{"0xf", 16, true, 15},
                    UnsignedCase{"0x0", 16, true, 0}, UnsignedCase{"0x01", 16, true, 1},
                    UnsignedCase{"0x9", 16, true, 9}, UnsignedCase{"0x/", 16, true, 0},
                    UnsignedCase{"0x:", 16, true, 0}, UnsignedCase{"0x@", 16, true, 0},
                    UnsignedCase{"0xG", 16, true, 0}, UnsignedCase{"0x`", 16, true, 0},
                    UnsignedCase{"0x", 16, true, 0}, UnsignedCase{"z", 36, true, 35},
                    UnsignedCase{"1", 1, false, 0}, UnsignedCase{"1", 37, false, 0},
                    UnsignedCase{"1", -1, false, 0}));

struct SignedCase {
  const char* text;
  bool ok;
  std::int32_t value;
};

class ParseSigned : public testing::TestWithParam<SignedCase> {};

TEST_P(ParseSigned, AgreesWithA32BitHost) {
  std::int32_t value = 77;
  EXPECT_EQ(parseSigned(GetParam().text, value, 10), GetParam().ok);
  EXPECT_EQ(value, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ParseSigned,
    testing::Values(
        SignedCase{"0", true, 0}, SignedCase{"999999999", true, 999999999},
        SignedCase{"123456789x", true, 123456789}, SignedCase{"1000000000", true, 1000000000},
        SignedCase{"0000000000012", true, 12}, SignedCase{"9999999999", false, 2147483647},
        SignedCase{"12x", true, 12}, SignedCase{"12:", true, 12}, SignedCase{"x", false, 0},
        SignedCase{"", false, 0}, SignedCase{" +7]", true, 7}, SignedCase{"-1", true, -1},
        SignedCase{"-0", true, 0}, SignedCase{"007", true, 7}, SignedCase{"- 1", false, 0},
        SignedCase{"2147483647", true, 2147483647}, SignedCase{"2147483648", false, 2147483647},
        SignedCase{"-2147483648", true, -2147483647 - 1},
        SignedCase{"-2147483649", false, -2147483647 - 1},
        SignedCase{"99999999999", false, 2147483647},
        SignedCase{"-99999999999999999999999", false, -2147483647 - 1}));

TEST(ParseSigned, TakesTheBaseThatItIsGiven) {
  std::int32_t value = 0;
  for (const int base : {2, 9, 10, 11, 16, 36}) {
    EXPECT_TRUE(parseSigned("10", value, base));
    EXPECT_EQ(value, base);
  }
  EXPECT_TRUE(parseSigned("f", value, 16));
  EXPECT_EQ(value, 15);
  EXPECT_TRUE(parseSigned("010", value, 0));
  EXPECT_EQ(value, 8);
  EXPECT_TRUE(parseSigned("-0x1F", value, 0));
  EXPECT_EQ(value, -31);
}

TEST(ParseSigned, SkipsTheSixBlanksAndNothingBesideThem) {
  std::int32_t out = 0;
  EXPECT_TRUE(parseSigned(" \t\n\v\f\r7", out, 10));
  EXPECT_EQ(out, 7);
  for (const char* text : {"\b7",
                           "\x0e"
                           "7",
                           "\x1f"
                           "7",
                           "!7"}) {
    EXPECT_FALSE(parseSigned(text, out, 10)) << text;
    EXPECT_EQ(out, 0) << text;
  }
}

TEST(ParseSigned, NeverReadsPastTheView) {
  const std::string digits = "123456";
  std::int32_t value = 0;
  EXPECT_TRUE(parseSigned(std::string_view(digits).substr(0, 3), value, 10));
  EXPECT_EQ(value, 123);
}

TEST(ScanSigned, TellsWhereTheNumberEnds) {
  std::int32_t value = 77;
  EXPECT_EQ(scanSigned(" \t+12].mic", value, 10), 5U);
  EXPECT_EQ(value, 12);
  EXPECT_EQ(scanSigned("-99999999999999999999 5", value, 10), 21U);
  EXPECT_EQ(value, -2147483647 - 1);
  EXPECT_EQ(scanSigned("2147483648", value, 10), 10U);
  EXPECT_EQ(value, 2147483647);
  EXPECT_EQ(scanSigned(" x", value, 10), 0U);
  EXPECT_EQ(value, 0);
}

TEST(ScanUnsigned, TellsWhereTheNumberEnds) {
  std::uint32_t value = 77;
  EXPECT_EQ(scanUnsigned("0x1F.", value, 16), 4U);
  EXPECT_EQ(value, 31U);
  EXPECT_EQ(scanUnsigned("0xg", value, 16), 1U);
  EXPECT_EQ(value, 0U);
  EXPECT_EQ(scanUnsigned("100000000]", value, 16), 9U);
  EXPECT_EQ(value, 4294967295U);
  EXPECT_EQ(scanUnsigned("-2.", value, 16), 2U);
  EXPECT_EQ(value, 4294967294U);
  EXPECT_EQ(scanUnsigned("", value, 16), 0U);
  EXPECT_EQ(value, 0U);
}

TEST(ParseWholeUnsigned, WantsNothingAfterTheDigits) {
  std::uint32_t value = 0;
  EXPECT_TRUE(parseWholeUnsigned(" 9", value));
  EXPECT_EQ(value, 9U);
  EXPECT_TRUE(parseWholeUnsigned("007", value));
  EXPECT_EQ(value, 7U);
  EXPECT_TRUE(parseWholeUnsigned("010", value));
  EXPECT_EQ(value, 10U);
  EXPECT_TRUE(parseWholeUnsigned("-4", value));
  EXPECT_EQ(value, 4294967292U);
  EXPECT_FALSE(parseWholeUnsigned("5 ", value));
  EXPECT_FALSE(parseWholeUnsigned("7x", value));
  EXPECT_FALSE(parseWholeUnsigned("", value));
  EXPECT_FALSE(parseWholeUnsigned("4294967296", value));
}

}  // namespace
}  // namespace quenfold
