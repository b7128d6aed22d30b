#include <gtest/gtest.h>

#include "logicalio/bit_packing.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

/// The tokens as "literal", "$name:bits<<shift&mask" or "#...", one blank between them.
std::string shown(std::string_view text) {
  std::string out;
  for (const BitPackToken& token : parseBitPacking(text)) {
    out += out.empty() ? "" : " ";
    if (token.kind == BitPackKind::kLiteral) {
      out += "'" + token.text + "'";
      continue;
    }
    out += token.kind == BitPackKind::kReference ? "$" : "#";
    out += token.text + ":" + std::to_string(token.bits) + "<<" + std::to_string(token.shift) +
           "&" + std::to_string(token.mask);
  }
  return out;
}

TEST(ParseBitPacking, ReadsTheWholeLayout) {
  EXPECT_EQ(shown("${device,3}.${slot,2}.${port_prefix,1}[#{port_id,4}].${type,1}.ch#{ch,2}"),
            "$device:3<<10&7 '.' $slot:2<<8&3 '.' $port_prefix:1<<7&1 '[' #port_id:4<<3&15 ']."
            "' $type:1<<2&1 '.ch' #ch:2<<0&3");
}

TEST(ParseBitPacking, LosesTextAfterTheLastField) { EXPECT_EQ(shown("${a,3}xyz"), "$a:3<<0&7"); }

TEST(ParseBitPacking, KeepsTextBeforeAField) { EXPECT_EQ(shown("ab${c,2}"), "'ab' $c:2<<0&3"); }

TEST(ParseBitPacking, SkipsFieldsWithoutAWidth) {
  EXPECT_EQ(shown("${c}"), "");
  EXPECT_EQ(shown("${c,}"), "");
  EXPECT_EQ(shown("${c,x}"), "");
  EXPECT_EQ(shown("${c,-}"), "");
  EXPECT_EQ(shown("${}"), "");
  EXPECT_EQ(shown("${a}${b,1}"), "$b:1<<0&1");
  EXPECT_EQ(shown("${a},#{b,1}"), "',' #b:1<<0&1");
}

TEST(ParseBitPacking, DropsATypeCharacterWithoutABrace) {
  EXPECT_EQ(shown("$x#{d,1}"), "'x' #d:1<<0&1");
  EXPECT_EQ(shown("$x"), "");
  EXPECT_EQ(shown("$"), "");
  EXPECT_EQ(shown("a$"), "'a'");
  EXPECT_EQ(shown("a$b#{d,1}"), "'a' 'b' #d:1<<0&1");
  EXPECT_EQ(shown("$${d,1}"), "$d:1<<0&1");
}

TEST(ParseBitPacking, StopsAtAnOpenBrace) {
  EXPECT_EQ(shown("${a,1}x${b,2"), "$a:1<<0&1 'x'");
  EXPECT_EQ(shown("${"), "");
}

TEST(ParseBitPacking, ReadsWidthsAsTheNumberParserDoes) {
  EXPECT_EQ(shown("${a, 3x}"), "$a:3<<0&7");
  EXPECT_EQ(shown("${a,+3}"), "$a:3<<0&7");
  EXPECT_EQ(shown("${a,0}"), "$a:0<<0&0");
  EXPECT_EQ(shown("${a,010}"), "$a:10<<0&1023");
  EXPECT_EQ(shown("${a,1,2}"), "$a:1<<0&1");
  EXPECT_EQ(shown("${,1}"), "$:1<<0&1");
  EXPECT_EQ(shown("${a,4294967295}"), "$a:4294967295<<0&4294967295");
  EXPECT_EQ(shown("${a,-1}"), "$a:4294967295<<0&4294967295");
  EXPECT_EQ(shown("${a,4294967296}"), "");
}

TEST(ParseBitPacking, MasksAreAllOnesFrom32BitsOn) {
  EXPECT_EQ(shown("${a,31}"), "$a:31<<0&2147483647");
  EXPECT_EQ(shown("${a,32}"), "$a:32<<0&4294967295");
  EXPECT_EQ(shown("${b,2}${a,40}"), "$b:2<<40&3 $a:40<<0&4294967295");
}

TEST(ParseBitPacking, StaysLinearWithoutCommas) {
  std::string text;
  for (int i = 0; i < 300000; ++i) {
    text += "${x}";
  }
  EXPECT_TRUE(parseBitPacking(text).empty());
}

TEST(WriteBitPacking, IsTheReverseOfReading) {
  const char* const text =
      "${device,3}.${slot,2}.${port_prefix,1}[#{port_id,4}].${type,1}.ch#{ch,2}";
  EXPECT_EQ(writeBitPacking(parseBitPacking(text)), text);
  EXPECT_EQ(writeBitPacking({}), "");
}

TEST(WriteBitPacking, WritesNothingForAnUntypedToken) {
  EXPECT_EQ(writeBitPacking({makeLiteralToken("a"), BitPackToken{}, makeLiteralToken("b")}), "ab");
}

TEST(MakeLiteralToken, TakesNoBits) {
  const BitPackToken token = makeLiteralToken("ab");
  EXPECT_EQ(token.kind, BitPackKind::kLiteral);
  EXPECT_EQ(token.text, "ab");
  EXPECT_EQ(token.bits, 0U);
  EXPECT_EQ(token.mask, 0U);
  EXPECT_EQ(token.shift, 0U);
}

TEST(BitPackKind, HasTheDefinedNumbers) {
  EXPECT_EQ(static_cast<std::uint32_t>(BitPackKind::kLiteral), 0U);
  EXPECT_EQ(static_cast<std::uint32_t>(BitPackKind::kReference), 1U);
  EXPECT_EQ(static_cast<std::uint32_t>(BitPackKind::kNumber), 2U);
  EXPECT_EQ(static_cast<std::uint32_t>(BitPackKind::kUntyped), 3U);
}

TEST(MakeFieldToken, KnowsTwoTypes) {
  EXPECT_EQ(makeFieldToken('$', "n", 3).kind, BitPackKind::kReference);
  EXPECT_EQ(makeFieldToken('#', "n", 3).kind, BitPackKind::kNumber);
  EXPECT_EQ(writeBitPacking({makeFieldToken('#', "n", 3)}), "#{n,3}");
}

TEST(MakeFieldToken, MessageBeginsAtTheCharactersCode) {
  const auto message = [](char type) {
    return test::messageOf([&] { makeFieldToken(type, "n", 1); });
  };
  EXPECT_EQ(message('\0'), "Invalid Bit Packing type char: ");
  EXPECT_EQ(message('\x08'), "Bit Packing type char: ");
  EXPECT_EQ(message('\x1e'), " ");
  EXPECT_EQ(message('x'), "");
  EXPECT_EQ(message('\xff'), "");
}

}  // namespace
}  // namespace quenfold
