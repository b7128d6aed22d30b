#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "json/document.h"
#include "support/heap.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

double numberOf(std::string text) {
  const JsonDocument document = parseJson(text);
  return document.IsNumber() ? document.GetDouble() : -1;
}

TEST(JsonLibrary, AViolatedConditionIsAnErrorThatEndsTheRun) {
  const JsonValue null;
  EXPECT_THROW(static_cast<void>(null.GetArray()), std::length_error);
  EXPECT_EQ(test::messageOf([] { throwJsonAssertion("IsArray()"); }),
            "JSON library condition failed: IsArray()");
}

TEST(JsonLibrary, PutsEverythingOnEightBytes) {
  EXPECT_EQ(RAPIDJSON_ALIGN(std::size_t{0}), 0U);
  EXPECT_EQ(RAPIDJSON_ALIGN(std::size_t{1}), 8U);
  EXPECT_EQ(RAPIDJSON_ALIGN(std::size_t{8}), 8U);
  EXPECT_EQ(RAPIDJSON_ALIGN(std::size_t{9}), 16U);
}

TEST(JsonAllocator, GivesNothingForNothingAndFreesWhatIsResizedToIt) {
  EXPECT_EQ(JsonAllocator::Malloc(0), nullptr);
  EXPECT_EQ(JsonAllocator::Realloc(JsonAllocator::Malloc(8), 8, 0), nullptr);
}

TEST(JsonAllocator, GivesMemoryBack) {
  const std::size_t before = test::heapInUse();
  JsonAllocator::Free(JsonAllocator::Malloc(test::kLarge));
  EXPECT_EQ(test::heapInUse(), before);
  EXPECT_EQ(JsonAllocator::Realloc(JsonAllocator::Malloc(test::kLarge), test::kLarge, 0), nullptr);
  EXPECT_EQ(test::heapInUse(), before);
}

TEST(ParseJson, TakesEveryExponentForANumberOrNone) {
  for (const char* exponent : {"2147483639", "2147483640", "2147483648", "99999999999999999999"}) {
    for (const char* digits : {"1", "1.0", "1.0000000000", "12345678901234567890.5"}) {
      EXPECT_EQ(numberOf(std::string(digits) + "e-" + exponent), 0) << digits << exponent;
      EXPECT_EQ(numberOf(std::string(digits) + "e" + exponent), -1) << digits << exponent;
    }
    // The library refuses a large exponent before it looks at the digits.
    EXPECT_EQ(numberOf(std::string("0e") + exponent), -1) << exponent;
  }
}

}  // namespace
}  // namespace quenfold
