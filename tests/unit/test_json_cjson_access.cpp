#include <gtest/gtest.h>

#include <limits>

#include "json/cjson_access.h"
#include "json/cjson_tree.h"

namespace quenfold {
namespace {

TEST(FindMember, IgnoresCaseAndTakesTheFirst) {
  const CJsonDocument object = parseCJson(R"({"a": 1, "NAME": 2, "name": 3})");
  ASSERT_NE(findMember(object.get(), "name"), nullptr);
  EXPECT_EQ(findMember(object.get(), "name")->valueint, 2);
  EXPECT_EQ(findMember(object.get(), "other"), nullptr);
}

TEST(FindMember, FindsNothingInOtherValues) {
  for (const char* json : {"[1, [2]]", "5", "null", "\"name\"", "{}"}) {
    EXPECT_EQ(findMember(parseCJson(json).get(), "name"), nullptr) << json;
  }
  EXPECT_EQ(findMember(nullptr, "name"), nullptr);
}

TEST(CJsonViews, ExpectMissingTexts) {
  const CJsonDocument list = parseCJson(R"(["x", 5, null])");
  EXPECT_EQ(memberName(*firstChild(list.get())), "");
  EXPECT_STREQ(stringValue(list->child), "x");
  EXPECT_EQ(stringValue(list->child->next), nullptr);
  EXPECT_EQ(stringValue(list->child->next->next), nullptr);
  EXPECT_EQ(stringValue(nullptr), nullptr);
  EXPECT_EQ(firstChild(nullptr), nullptr);
  EXPECT_EQ(firstChild(list->child), nullptr);
}

TEST(IntValues, TakeEveryChild) {
  const CJsonDocument list = parseCJson(R"([3, "7", true, false, null, 2.9, 1e20, -1e20])");
  EXPECT_EQ(intValues(list.get()),
            (std::vector<std::int32_t>{3, 0, 1, 0, 0, 2, 2147483647, -2147483647 - 1}));
  EXPECT_EQ(intValues(parseCJson(R"({"a": 4})").get()), (std::vector<std::int32_t>{4}));
  EXPECT_EQ(intValues(parseCJson("[4294967297, 9223372036854775809, -4294967297]").get()),
            (std::vector<std::int32_t>{2147483647, 2147483647, -2147483647 - 1}));
  EXPECT_TRUE(intValues(parseCJson("5").get()).empty());
  EXPECT_TRUE(intValues(nullptr).empty());
}

TEST(ToUint, CutsTowardZeroAndSaturates) {
  EXPECT_EQ(toUint32(2.9), 2U);
  EXPECT_EQ(toUint32(1), 1U);
  EXPECT_EQ(toUint32(-0.9), 0U);
  EXPECT_EQ(toUint32(-5), 0U);
  EXPECT_EQ(toUint32(4294967295.0), 4294967295U);
  EXPECT_EQ(toUint32(4294967295.5), 4294967295U);
  EXPECT_EQ(toUint32(4294967297.0), 4294967295U);
  EXPECT_EQ(toUint32(18446744073709541376.0), 4294967295U);
  EXPECT_EQ(toUint32(1e300), 4294967295U);
  EXPECT_EQ(toUint64(-1), 0U);
  EXPECT_EQ(toUint64(4294967296.0), 4294967296U);
  EXPECT_EQ(toUint64(18446744073709549568.0), 18446744073709549568U);
  EXPECT_EQ(toUint64(18446744073709551616.0), 18446744073709551615U);
  EXPECT_EQ(toUint64(std::numeric_limits<double>::infinity()), 18446744073709551615U);
  EXPECT_EQ(toUint64(-std::numeric_limits<double>::infinity()), 0U);
  EXPECT_EQ(toUint64(std::numeric_limits<double>::quiet_NaN()), 0U);
}

TEST(LabelMapToJson, GivesUnsignedNumbersInKeyOrder) {
  const CJsonDocument document = buildCJson([] {
    return labelMapToJson({{"b", 4294967295U}, {"a", 0}});
  });
  ASSERT_EQ(cJSON_GetArraySize(document.get()), 2);
  EXPECT_EQ(memberName(*document->child), "a");
  EXPECT_EQ(document->child->valuedouble, 0);
  EXPECT_EQ(memberName(*document->child->next), "b");
  EXPECT_EQ(document->child->next->valuedouble, 4294967295.0);
  EXPECT_NE(cJSON_IsNumber(document->child->next), 0);
}

}  // namespace
}  // namespace quenfold
