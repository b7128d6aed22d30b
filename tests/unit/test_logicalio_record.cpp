#include <gtest/gtest.h>

#include "json/cjson_tree.h"
#include "logicalio/record.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

std::string shown(const std::vector<CatEntry>& entries) {
  std::string out;
  for (const CatEntry& entry : entries) {
    out += (entry.isText ? "'" : "<") + catEntryText(entry) + (entry.isText ? "'" : ">");
  }
  return out;
}

std::string listed(const char* json) { return shown(parseCategoryList(*parseCJson(json))); }

std::string read(const char* json) { return shown({readCatEntry(parseCJson(json).get())}); }

TEST(ParseCategoryList, TellsNumbersFromTexts) {
  EXPECT_EQ(listed(R"(["5", "Show", 7, "x"])"), "<5>'Show'<7>'x'");
}

TEST(ParseCategoryList, TakesWholeDecimalNumbersOnly) {
  EXPECT_EQ(listed(R"([" 9", "+5", "007", "-4", "4294967295"])"), "<9><5><7><-4><-1>");
  EXPECT_EQ(listed(R"(["7x", "5 ", "4294967296", "0x1", "1.5", "-"])"),
            "'7x''5 ''4294967296''0x1''1.5''-'");
}

TEST(ParseCategoryList, CutsNumbers) {
  EXPECT_EQ(listed("[2.9, -2.9, 1e20]"), "<2><-2><2147483647>");
}

TEST(ParseCategoryList, EndsAtAnythingElse) {
  EXPECT_EQ(listed(R"(["a", "", "b"])"), "'a'");
  EXPECT_EQ(listed(R"(["a", null, "b"])"), "'a'");
  EXPECT_EQ(listed(R"(["a", true, "b"])"), "'a'");
  EXPECT_EQ(listed(R"(["a", ["b"], "c"])"), "'a'");
  EXPECT_EQ(listed("[]"), "");
}

TEST(ParseCategoryList, WalksAnyChildren) {
  EXPECT_EQ(listed(R"({"x": "a", "y": 3})"), "'a'<3>");
  EXPECT_EQ(listed("\"text\""), "");
  EXPECT_EQ(listed("5"), "");
}

TEST(ReadCatEntry, KeepsTextsAsTheyAre) {
  EXPECT_EQ(read("\"5\""), "'5'");
  EXPECT_EQ(read("\"\""), "''");
  EXPECT_EQ(read("5"), "<5>");
  EXPECT_EQ(read("-5"), "<-5>");
}

TEST(CatEntry, IsTheNumber0UntilItIsSet) { EXPECT_EQ(shown({CatEntry()}), "<0>"); }

TEST(ReadCatEntry, ReportsEachFault) {
  const auto message = [](const cJSON* value) {
    return test::messageOf([&] { readCatEntry(value); });
  };
  EXPECT_EQ(message(nullptr), "CatEntry JSON obj is null");
  for (const char* json : {"null", "true", "[]", "{}"}) {
    EXPECT_EQ(message(parseCJson(json).get()), "CatEntry JSON invalid object type") << json;
  }
  cJSON withoutText = {};
  withoutText.type = cJSON_String;
  EXPECT_EQ(message(&withoutText), "CatEntry JSON string value is null");
}

}  // namespace
}  // namespace quenfold
