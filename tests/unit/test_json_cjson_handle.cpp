#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "json/cjson_handle.h"
#include "support/failing_malloc.h"

namespace quenfold {
namespace {

void* noMemory(std::size_t /*size*/) { return nullptr; }

/// While it lives, cJSON gets no memory outside of a parse.
class ExhaustedCJson {
 public:
  ExhaustedCJson() {
    cJSON_Hooks hooks = {noMemory, std::free};
    cJSON_InitHooks(&hooks);
  }
  ~ExhaustedCJson() { cJSON_InitHooks(nullptr); }
  ExhaustedCJson(const ExhaustedCJson&) = delete;
  ExhaustedCJson& operator=(const ExhaustedCJson&) = delete;
};

TEST(ParseCJson, GivesNothingForWhatIsNotJson) {
  for (const char* text : {"", " ", "{", "[1,]", "{\"a\" 1}", "nul", "{\"a\":1,}"}) {
    EXPECT_EQ(parseCJson(text), nullptr) << text;
  }
}

TEST(ParseCJson, StopsAfterTheFirstValue) {
  EXPECT_EQ(printCJson(*parseCJson("\xef\xbb\xbf [1] rest")), "[1]");
}

TEST(ParseCJson, IsBoundedInDepth) {
  constexpr std::size_t kDepth = 200000;
  const std::string open(kDepth, '[');
  EXPECT_EQ(parseCJson(open), nullptr);
  EXPECT_EQ(parseCJson(open + std::string(kDepth, ']')), nullptr);
  EXPECT_NE(parseCJson(std::string(1000, '[') + std::string(1000, ']')), nullptr);
}

TEST(ParseCJson, RunningOutOfMemoryIsNoSyntaxError) {
  const std::string text = R"({"name": [1, "text", {"a": null}]})";
  std::size_t allowed = 0;
  for (bool whole = false; !whole; ++allowed) {
    const test::FailingMalloc exhausted(allowed);
    try {
      whole = parseCJson(text) != nullptr;
      EXPECT_FALSE(test::FailingMalloc::hasFailed()) << allowed;
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(test::FailingMalloc::hasFailed()) << allowed;
    }
  }
  // Six values, two names and a text at least, and the last round.
  EXPECT_GE(allowed, 10U);
}

TEST(ParseCJson, ASyntaxErrorStaysOneAfterAFailure) {
  {
    const test::FailingMalloc exhausted(0);
    EXPECT_THROW(parseCJson("[1]"), std::bad_alloc);
  }
  EXPECT_EQ(parseCJson("[1"), nullptr);
}

TEST(BuildingCJson, ThrowsWithoutMemory) {
  const CJsonHandle object = cjsonObject();
  const CJsonHandle array = cjsonArray();
  CJsonHandle item = cjsonNumber(1);
  const ExhaustedCJson exhausted;
  EXPECT_THROW(cjsonObject(), std::bad_alloc);
  EXPECT_THROW(cjsonArray(), std::bad_alloc);
  EXPECT_THROW(cjsonString("x"), std::bad_alloc);
  EXPECT_THROW(cjsonNumber(1), std::bad_alloc);
  EXPECT_THROW(cjsonIntArray({1}), std::bad_alloc);
  EXPECT_THROW(printCJson(*object), std::bad_alloc);
  EXPECT_THROW(addMember(*object, "name", std::move(item)), std::bad_alloc);
  EXPECT_EQ(object->child, nullptr);
  EXPECT_EQ(array->child, nullptr);
}

TEST(BuildingCJson, KeepsOrderAndRepeatedNames) {
  const CJsonHandle object = cjsonObject();
  addMember(*object, "b", cjsonIntArray({}));
  addMember(*object, "a", cjsonIntArray({-2147483647 - 1, 2147483647}));
  addMember(*object, "b", cjsonString("\xc3\xa9\""));
  CJsonHandle list = cjsonArray();
  addElement(*list, cjsonNumber(-1));
  addElement(*list, cjsonIntArray({1, -2}));
  addMember(*object, "list", std::move(list));
  EXPECT_EQ(printCJson(*object),
            "{\n"
            "\t\"b\":\t[],\n"
            "\t\"a\":\t[-2147483648, 2147483647],\n"
            "\t\"b\":\t\"\xc3\xa9\\\"\",\n"
            "\t\"list\":\t[-1, [1, -2]]\n"
            "}");
}

}  // namespace
}  // namespace quenfold
