#include <gtest/gtest.h>

#include <new>
#include <string>

#include "json/cjson_handle.h"
#include "support/cjson_trees.h"
#include "support/failing_malloc.h"
#include "support/heap.h"

namespace quenfold {
namespace {

TEST(ParseCJson, GivesNothingForWhatIsNotJson) {
  for (const char* text : {"", " ", "{", "[1,]", "{\"a\" 1}", "nul", "{\"a\":1,}"}) {
    EXPECT_EQ(parseCJson(text), nullptr) << text;
  }
}

TEST(ParseCJson, StopsAfterTheFirstValue) {
  EXPECT_EQ(test::printCJson(*parseCJson("\xef\xbb\xbf [1] rest")), "[1]");
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
  const test::CJsonHandle built = test::cjsonString("built");
  EXPECT_EQ(failed, nullptr);
  EXPECT_EQ(test::printCJson(*first), "{\n\t\"a\":\t[\"one\", 1]\n}");
  first = parseCJson("[4]");
  EXPECT_EQ(test::printCJson(*first), "[4]");
  first.reset();
  EXPECT_EQ(test::printCJson(*second), "{\n\t\"c\":\t[\"three\", 3]\n}");
  EXPECT_EQ(test::printCJson(*built), "\"built\"");
}

TEST(ParseCJson, ADocumentThatIsGivenUpFreesItsBlocks) {
  const std::size_t before = test::heapInUse();
  CJsonDocument document = parseCJson("[\"" + std::string(test::kLarge, 'x') + "\"]");
  EXPECT_NE(document, nullptr);
  document.reset();
  EXPECT_EQ(test::heapInUse(), before);
}

}  // namespace
}  // namespace quenfold
