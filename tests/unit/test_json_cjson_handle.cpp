#include <gtest/gtest.h>

#include "json/cjson_handle.h"

namespace quenfold {
namespace {

TEST(ParseCJson, GivesAnEmptyHandleForWhatIsNotJson) {
  EXPECT_FALSE(parseCJson(""));
  EXPECT_FALSE(parseCJson("{"));
  EXPECT_TRUE(parseCJson("{} and more"));
}

TEST(ParseCJson, SurvivesDeepNesting) {
  EXPECT_FALSE(parseCJson(std::string(200000, '[')));
  EXPECT_FALSE(parseCJson(std::string(200000, '[') + std::string(200000, ']')));
  EXPECT_TRUE(parseCJson(std::string(1000, '[') + std::string(1000, ']')));
}

TEST(PrintCJson, PrintsWhatWasBuilt) {
  const CJsonHandle object = cjsonObject();
  addMember(*object, "name", cjsonString("a\"b"));
  addMember(*object, "name", cjsonNumber(4294967295.0));
  CJsonHandle array = cjsonArray();
  addElement(*array, cjsonNumber(-1));
  addElement(*array, cjsonIntArray({}));
  addElement(*array, cjsonIntArray({1, -2}));
  addMember(*object, "list", std::move(array));
  EXPECT_EQ(printCJson(*object),
            "{\n\t\"name\":\t\"a\\\"b\",\n\t\"name\":\t4294967295,\n\t\"list\":\t[-1, [], [1, "
            "-2]]\n}");
}

}  // namespace
}  // namespace quenfold
