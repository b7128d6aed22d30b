#include <gtest/gtest.h>

#include <cstdint>

#include "json/access.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

/// A document together with the text that it lives in.
struct Parsed {
  explicit Parsed(std::string json) : text(std::move(json)), root(parseJson(text)) {}
  std::string text;
  JsonDocument root;
};

std::string stringMessage(const char* json, const char* name) {
  const Parsed parsed(json);
  return test::messageOf([&] { jsonGetString(parsed.root, name); });
}

std::string intMessage(const char* json, const char* name) {
  const Parsed parsed(json);
  return test::messageOf([&] { jsonGetInt(parsed.root, name); });
}

TEST(JsonGetString, ChecksInOrder) {
  EXPECT_EQ(stringMessage("[]", "label"), "jsonGetString passed non-object");
  EXPECT_EQ(stringMessage("{}", "label"), "label not found");
  EXPECT_EQ(stringMessage(R"({"label": 5})", "label"), "label is not string");
  EXPECT_EQ(stringMessage(R"({"serial": null})", "serial"), "serial is not string");
  EXPECT_EQ(stringMessage(R"({"Label": "x"})", "label"), "label not found");
}

TEST(JsonGetString, TakesTheFirstMemberUpToAZeroByte) {
  EXPECT_EQ(jsonGetString(Parsed(R"({"a":"x","a":"y"})").root, "a"), "x");
  EXPECT_EQ(jsonGetString(Parsed(R"({"a":"x\u0000y"})").root, "a"), "x");
  EXPECT_EQ(jsonGetString(Parsed(R"({"a":"\u00e9\n"})").root, "a"), "\xc3\xa9\n");
  EXPECT_EQ(jsonGetString(Parsed("{\"a\":\"\xff\xfe\"}").root, "a"), "\xff\xfe");
}

TEST(JsonGetText, ViewsWhatJsonGetStringCopies) {
  const Parsed parsed(R"({"a":"x\u0000y"})");
  EXPECT_EQ(jsonGetText(parsed.root, "a"), "x");
  EXPECT_EQ(jsonGetText(parsed.root, "a").data(), parsed.text.data() + 6);
  EXPECT_EQ(test::messageOf([&] { jsonGetText(parsed.root, "b"); }), "b not found");
}

TEST(FindMember, FindsNothingInAValueThatIsNoObject) {
  for (const char* json : {"[]", R"(["a"])", "5", R"("a")", "null", "{}"}) {
    EXPECT_EQ(findMember(Parsed(json).root, "a"), nullptr) << json;
  }
}

TEST(JsonGetInt, ChecksInOrder) {
  EXPECT_EQ(intMessage("[1]", "id"), "jsonGetInt passed non-object");
  EXPECT_EQ(intMessage("{}", "id"), "id not found");
  EXPECT_EQ(intMessage(R"({"id": "7"})", "id"), "id is not number");
  EXPECT_EQ(intMessage(R"({"id": 3.5})", "id"), "id is not number");
  EXPECT_EQ(intMessage(R"({"id": 3.0})", "id"), "id is not number");
  EXPECT_EQ(intMessage(R"({"id": 4294967295})", "id"), "id is not number");
  EXPECT_EQ(intMessage(R"({"id": 2147483648})", "id"), "id is not number");
  EXPECT_EQ(intMessage(R"({"id": true})", "id"), "id is not number");
}

TEST(JsonGetInt, GivesTheWholeRange) {
  EXPECT_EQ(jsonGetInt(Parsed(R"({"id": -7})").root, "id"), -7);
  EXPECT_EQ(jsonGetInt(Parsed(R"({"id": 2147483647})").root, "id"), 2147483647);
  EXPECT_EQ(jsonGetInt(Parsed(R"({"id": -2147483648})").root, "id"), -2147483647 - 1);
}

TEST(JsonToInt32, CutsTowardZeroThenSaturates) {
  const auto toInt32 = [](const char* number) {
    return jsonToInt32(Parsed(std::string("[") + number + "]").root[0]);
  };
  EXPECT_EQ(toInt32("3.9"), 3);
  EXPECT_EQ(toInt32("-3.9"), -3);
  EXPECT_EQ(toInt32("-0.5"), 0);
  EXPECT_EQ(toInt32("2147483647"), 2147483647);
  EXPECT_EQ(toInt32("2147483647.5"), 2147483647);
  EXPECT_EQ(toInt32("2147483648"), 2147483647);
  EXPECT_EQ(toInt32("-2147483648"), -2147483647 - 1);
  EXPECT_EQ(toInt32("-2147483649"), -2147483647 - 1);
  EXPECT_EQ(toInt32("18446744073709551615"), 2147483647);
  EXPECT_EQ(toInt32("-9223372036854775808"), -2147483647 - 1);
  EXPECT_EQ(toInt32("1e300"), 2147483647);
  EXPECT_EQ(toInt32("-1e300"), -2147483647 - 1);
}

TEST(ParseJson, GivesNullForWhatIsNotJson) {
  for (const char* text : {"", "x", "{", "[1,]", R"({"a":1} x)", R"("\ud800")", "nul", "01"}) {
    EXPECT_TRUE(Parsed(text).root.IsNull()) << text;
  }
}

TEST(ParseJson, SurvivesDeepNesting) {
  constexpr std::size_t kDepth = 200000;
  const std::string open(kDepth, '[');
  EXPECT_TRUE(Parsed(open).root.IsNull());
  EXPECT_TRUE(Parsed(open + std::string(kDepth, ']')).root.IsArray());
}

TEST(ParseJson, KeepsEveryNumber) {
  const auto number = [](const char* text) { return Parsed(std::string("[") + text + "]"); };
  EXPECT_EQ(number("0").root[0].GetInt(), 0);
  EXPECT_EQ(number("-0").root[0].GetInt(), 0);
  EXPECT_EQ(number("-2147483648").root[0].GetInt(), -2147483647 - 1);
  EXPECT_EQ(number("4294967295").root[0].GetUint(), 4294967295U);
  EXPECT_EQ(number("-9223372036854775808").root[0].GetInt64(), INT64_MIN);
  EXPECT_EQ(number("18446744073709551615").root[0].GetUint64(), UINT64_MAX);
  EXPECT_EQ(number("18446744073709551616").root[0].GetDouble(), 18446744073709551616.0);
  EXPECT_EQ(number("-1.5e3").root[0].GetDouble(), -1500.0);
  EXPECT_FALSE(number("3.0").root[0].IsInt());
  EXPECT_EQ(number("1,2.5,3").root[1].GetDouble(), 2.5);
  EXPECT_EQ(number("1e-400").root[0].GetDouble(), 0.0);
}

TEST(ParseJson, AcceptsTheNumbersThatTheLibraryAccepts) {
  for (const char* text : {"[1e309]", "[0e400]", "[1e99999999999]", "[01]", "[-]", "[1.]", "[.5]",
                           "[1e]", "[+1]", "[0x1]", "[NaN]", "[Inf]"}) {
    EXPECT_TRUE(Parsed(text).root.IsNull()) << text;
    EXPECT_TRUE(rapidjson::Document().Parse(text).HasParseError()) << text;
  }
}

TEST(ParseJson, ReadsATinyNumberAsZero) {
  // The library's own conversion reads outside its table on this one.
  EXPECT_EQ(Parsed("[1.0000000000e-2147483639]").root[0].GetDouble(), 0.0);
}

}  // namespace
}  // namespace quenfold
