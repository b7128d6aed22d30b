#include <gtest/gtest.h>

#include <string_view>

#include "database/shown_text.h"

namespace quenfold::database {
namespace {

TEST(ShownText, KeepsWhatCanBeRead) {
  EXPECT_EQ(shownText(""), "");
  EXPECT_EQ(shownText(" CAM 1 \"~\\"), " CAM 1 \"~\\");
  EXPECT_EQ(shownText("K\u00F6ln \u0416 \u4E2D \uD7FF \uE000 \U00010000 \U0010FFFF"),
            "K\u00F6ln \u0416 \u4E2D \uD7FF \uE000 \U00010000 \U0010FFFF");
}

TEST(ShownText, SpellsControlCharacters) {
  EXPECT_EQ(shownText("a\x1B[31mb\n\t\r\x7F"), "a\\x1B[31mb\\x0A\\x09\\x0D\\x7F");
  EXPECT_EQ(shownText(std::string_view("\0\x1F \x7E", 4)), "\\x00\\x1F ~");
}

TEST(ShownText, SpellsControlCharactersBeyondAscii) {
  EXPECT_EQ(shownText("\xC2\x9B;m"), "\\xC2\\x9B;m");
  EXPECT_EQ(shownText("\xC2\x80\xC2\x9F\xC2\xA0"), "\\xC2\\x80\\xC2\\x9F\xC2\xA0");
}

TEST(ShownText, SpellsBytesThatAreNoCharacter) {
  EXPECT_EQ(shownText("\x9B;m"), "\\x9B;m");
  EXPECT_EQ(shownText("\xC0\x9B\xC1\xBF\xFE\xFF"), "\\xC0\\x9B\\xC1\\xBF\\xFE\\xFF");
  EXPECT_EQ(shownText("\xE0\x9F\xBF"), "\\xE0\\x9F\\xBF");           // a shorter form exists
  EXPECT_EQ(shownText("\xED\xA0\x80"), "\\xED\\xA0\\x80");           // a surrogate
  EXPECT_EQ(shownText("\xF0\x8F\xBF\xBF"), "\\xF0\\x8F\\xBF\\xBF");  // a shorter form exists
  EXPECT_EQ(shownText("\xF4\x90\x80\x80"), "\\xF4\\x90\\x80\\x80");  // beyond Unicode
  EXPECT_EQ(shownText("\xF5\x80\x80\x80"), "\\xF5\\x80\\x80\\x80");
}

TEST(ShownText, SpellsCharactersCutShort) {
  EXPECT_EQ(shownText("\xC3"), "\\xC3");
  EXPECT_EQ(shownText("\xC3x"), "\\xC3x");
  EXPECT_EQ(shownText("\xE4\xB8"), "\\xE4\\xB8");
  EXPECT_EQ(shownText("\xE4\xB8x"), "\\xE4\\xB8x");
  EXPECT_EQ(shownText("\xF0\x90\x80\x1B"), "\\xF0\\x90\\x80\\x1B");
  EXPECT_EQ(shownText("\xE4\xB8\xC3\xB6"), "\\xE4\\xB8\u00F6");
}

TEST(QuotedText, PutsMarksAround) {
  EXPECT_EQ(quotedText(""), "\"\"");
  EXPECT_EQ(quotedText("Vox\n"), "\"Vox\\x0A\"");
}

TEST(ShownWidth, CountsCharacters) {
  EXPECT_EQ(shownWidth(""), 0U);
  EXPECT_EQ(shownWidth("abc"), 3U);
  EXPECT_EQ(shownWidth("K\u00F6ln\u4E2D"), 5U);
}

}  // namespace
}  // namespace quenfold::database
