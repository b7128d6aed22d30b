#include <gtest/gtest.h>

#include "json/document.h"
#include "json/escape.h"
#include "support/cjson_trees.h"
#include "support/compact_json.h"
#include "support/texts.h"

namespace quenfold {
namespace {

std::string escaped(std::string_view text) {
  return test::textOf([&](OutputFile& out) { appendEscaped(out, text, kRapidJsonDigits); });
}

TEST(AppendEscaped, EscapesWhatJsonDemands) {
  EXPECT_EQ(escaped(""), "");
  EXPECT_EQ(escaped("plain"), "plain");
  EXPECT_EQ(escaped("\"a\\"), R"(\"a\\)");
  EXPECT_EQ(escaped("\b\f\n\r\t"), R"(\b\f\n\r\t)");
  EXPECT_EQ(escaped(std::string_view("a\0b\x01\x1f", 5)), R"(a\u0000b\u0001\u001F)");
}

TEST(AppendEscaped, LeavesEveryOtherByteAlone) {
  EXPECT_EQ(escaped(" /'\x7f\x80\xc3\xa9\xff"), " /'\x7f\x80\xc3\xa9\xff");
}

TEST(AppendEscaped, SpellsEveryByteAsTheWriterDoes) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text = {'x', static_cast<char>(byte), 'y'};
    const JsonValue value(rapidjson::StringRef(text.data(), text.size()));
    EXPECT_EQ('"' + escaped(text) + '"', test::compactJson(value)) << byte;
    EXPECT_EQ(endsPlainRun(static_cast<char>(byte)), escaped(text) != text) << byte;
  }
}

std::string escapedAsCJson(std::string_view text) {
  std::string out;
  appendEscaped(out, text, kCJsonDigits);
  return out;
}

TEST(AppendEscaped, SpellsEveryByteAsCJsonDoes) {
  for (int byte = 1; byte < 256; ++byte) {
    const std::string text = {'x', static_cast<char>(byte), 'y'};
    EXPECT_EQ('"' + escapedAsCJson(text) + '"', test::printCJson(*test::cjsonString(text))) << byte;
  }
}

}  // namespace
}  // namespace quenfold
