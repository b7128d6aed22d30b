#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>
#include <utility>

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
  // More numbers than a block holds nodes, and a text that gets memory of its own.
  std::string text = R"({"name": [1, "text", {"a": null}], "numbers": [0)";
  for (int number = 0; number < 2000; ++number) {
    text += ",0";
  }
  text += R"(], "long": ")" + std::string(100000, 'x') + "\"}";
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
  // Two blocks and the long text at least, and the last round.
  EXPECT_GE(allowed, 4U);
}

TEST(ParseCJson, ASyntaxErrorStaysOneAfterAFailure) {
  {
    const test::FailingMalloc exhausted(0);
    EXPECT_THROW(parseCJson("[1]"), std::bad_alloc);
  }
  EXPECT_EQ(parseCJson("[1"), nullptr);
}

TEST(ParseCJson, DocumentsLiveSideBySideAndWithoutTheirTexts) {
  CJsonDocument first = parseCJson(R"({"a": ["one", 1]})");
  const CJsonDocument failed = parseCJson(R"({"b": ["two", )");
  const CJsonDocument second = parseCJson(R"({"c": ["three", 3]})");
  const CJsonHandle built = cjsonString("built");
  EXPECT_EQ(failed, nullptr);
  EXPECT_EQ(printCJson(*first), "{\n\t\"a\":\t[\"one\", 1]\n}");
  first = parseCJson("[4]");
  EXPECT_EQ(printCJson(*first), "[4]");
  first.reset();
  EXPECT_EQ(printCJson(*second), "{\n\t\"c\":\t[\"three\", 3]\n}");
  EXPECT_EQ(printCJson(*built), "\"built\"");
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

/// While it lives, cJSON gets memory so many times, and what it holds is counted.
std::size_t callsLeft = 0;
int blocksHeld = 0;

void* countedMalloc(std::size_t size) {
  if (callsLeft == 0) {
    return nullptr;
  }
  --callsLeft;
  ++blocksHeld;
  return std::malloc(size);  // NOLINT(*-no-malloc,*-owning-memory)
}

void countedFree(void* memory) {
  blocksHeld -= memory == nullptr ? 0 : 1;
  std::free(memory);  // NOLINT(*-no-malloc,*-owning-memory)
}

class CountingCJson {
 public:
  explicit CountingCJson(std::size_t callsAllowed) {
    callsLeft = callsAllowed;
    blocksHeld = 0;
    cJSON_Hooks hooks = {countedMalloc, countedFree};
    cJSON_InitHooks(&hooks);
  }
  ~CountingCJson() { cJSON_InitHooks(nullptr); }
  CountingCJson(const CountingCJson&) = delete;
  CountingCJson& operator=(const CountingCJson&) = delete;
};

std::string builtAndPrinted() {
  const CJsonHandle object = cjsonObject();
  addMember(*object, "numbers", cjsonIntArray({1, 2, 3}));
  CJsonHandle list = cjsonArray();
  addElement(*list, cjsonString(std::string(300, 'x')));  // more than the first printing buffer
  addElement(*list, cjsonNumber(0.5));
  addMember(*object, "list", std::move(list));
  return printCJson(*object);
}

TEST(BuildingCJson, LeaksNothingAndGivesNothingHalfBuilt) {
  const std::string whole = builtAndPrinted();
  std::string built;
  std::size_t allowed = 0;
  for (; built.empty(); ++allowed) {
    const CountingCJson counting(allowed);
    try {
      built = builtAndPrinted();
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(callsLeft, 0U) << allowed;
    }
    EXPECT_EQ(blocksHeld, 0) << allowed;
  }
  EXPECT_EQ(built, whole);
  // Eight values, two names, a text and two printing buffers at least, and the last round.
  EXPECT_GE(allowed, 14U);
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
