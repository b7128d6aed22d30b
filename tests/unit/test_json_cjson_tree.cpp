#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "json/cjson_tree.h"
#include "support/failing_memory.h"
#include "support/heap.h"

namespace quenfold {
namespace {

std::string built(const std::function<cJSON*()>& build) { return printed(buildCJson(build)); }

// Parsing

TEST(ParseCJson, GivesNothingForWhatIsNotJson) {
  for (const char* text : {"", " ", "{", "[1,]", "{\"a\" 1}", "nul", "{\"a\":1,}"}) {
    EXPECT_EQ(parseCJson(text), nullptr) << text;
  }
}

TEST(ParseCJson, StopsAfterTheFirstValue) {
  EXPECT_EQ(printed(parseCJson("\xef\xbb\xbf [1] rest")), "[1]");
}

TEST(ParseCJson, IsBoundedInDepth) {
  constexpr std::size_t kDepth = 200000;
  const std::string open(kDepth, '[');
  EXPECT_EQ(parseCJson(open), nullptr);
  EXPECT_EQ(parseCJson(open + std::string(kDepth, ']')), nullptr);
  EXPECT_NE(parseCJson(std::string(1000, '[') + std::string(1000, ']')), nullptr);
}

TEST(ParseCJson, RunningOutOfMemoryIsNoSyntaxError) {
  std::string text = R"({"name": [1, "text", {"a": null}], "numbers": [0)";
  for (int number = 0; number < 2000; ++number) {
    text += ",0";
  }
  text += R"(], "long": ")" + std::string(1000000, 'x') + "\"}";
  std::size_t allowed = 0;
  for (bool whole = false; !whole; ++allowed) {
    const test::FailingMemory exhausted(allowed);
    try {
      whole = parseCJson(text) != nullptr;
      EXPECT_FALSE(exhausted.hasFailed()) << allowed;
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(exhausted.hasFailed()) << allowed;
    }
  }
  // Some pieces for the numbers, one for the long text at least, and the last round.
  EXPECT_GE(allowed, 4U);
}

TEST(ParseCJson, ASyntaxErrorStaysOneAfterAFailure) {
  {
    const test::FailingMemory exhausted(0);
    EXPECT_THROW(parseCJson("[1]"), std::bad_alloc);
  }
  EXPECT_EQ(parseCJson("[1"), nullptr);
}

TEST(ParseCJson, DocumentsLiveSideBySideAndWithoutTheirTexts) {
  CJsonDocument first = parseCJson(R"({"a": ["one", 1]})");
  const CJsonDocument failed = parseCJson(R"({"b": ["two", )");
  CJsonDocument second = parseCJson(R"({"c": ["three", 3]})");
  CJsonDocument third = buildCJson([] { return newString("built"); });
  EXPECT_EQ(failed, nullptr);
  EXPECT_EQ(printed(std::move(first)), "{\n\t\"a\":\t[\"one\", 1]\n}");
  first = parseCJson("[4]");
  EXPECT_EQ(printed(std::move(first)), "[4]");
  EXPECT_EQ(printed(std::move(second)), "{\n\t\"c\":\t[\"three\", 3]\n}");
  EXPECT_EQ(printed(std::move(third)), "\"built\"");
}

TEST(ParseCJson, ADocumentThatIsGivenUpFreesItsMemory) {
  const std::size_t before = test::heapInUse();
  CJsonDocument document = parseCJson("[\"" + std::string(test::kLarge, 'x') + "\"]");
  EXPECT_NE(document, nullptr);
  document.reset();
  EXPECT_EQ(test::heapInUse(), before);
}

// Building and printing

TEST(Printed, PutsMembersOnLinesAndElementsOnOne) {
  const std::string text = built([] {
    cJSON* const object = newObject();
    addMember(object, "a", newNumber(1));
    cJSON* const list = addMember(object, "list", newArray());
    addElement(list, newString("x"));
    addMember(addElement(list, newObject()), "b", newString(""));
    addElement(list, newNumber(-2));
    return object;
  });
  EXPECT_EQ(text, "{\n\t\"a\":\t1,\n\t\"list\":\t[\"x\", {\n\t\t\t\"b\":\t\"\"\n\t\t}, -2]\n}");
}

TEST(Printed, WritesWhatIsEmpty) {
  const std::string text = built([] {
    cJSON* const list = newArray();
    addElement(list, newObject());
    addElement(list, newArray());
    return list;
  });
  EXPECT_EQ(text, "[{\n\t}, []]");
}

TEST(Printed, EscapesAsLittleAsItMust) {
  const auto quoted = [](const std::string& text) {
    return built([&] { return newString(text.c_str()); });
  };
  EXPECT_EQ(quoted("\"\\\b\f\n\r\t"), R"("\"\\\b\f\n\r\t")");
  EXPECT_EQ(quoted("\x01\x0b\x1f"), R"("\u0001\u000b\u001f")");
  EXPECT_EQ(quoted("a/\x7f\xc3\xa9\xff"), "\"a/\x7f\xc3\xa9\xff\"");
  EXPECT_EQ(quoted("no\nend\n"), R"("no\nend\n")");
  EXPECT_EQ(built([] {
              cJSON* const object = newObject();
              addMember(object, "\"\t", newNumber(0));
              return object;
            }),
            "{\n\t\"\\\"\\t\":\t0\n}");
}

TEST(Printed, WritesNumbersOf32Bits) {
  const std::string text = built([] {
    cJSON* const list = newArray();
    addElement(list, newNumber(std::numeric_limits<std::int32_t>::min()));
    addElement(list, newNumber(std::numeric_limits<std::int32_t>::max()));
    addElement(list, newNumber(std::uint32_t{2147483648U}));
    addElement(list, newNumber(std::numeric_limits<std::uint32_t>::max()));
    addElement(list, newNumberText(0));
    addElement(list, newNumberText(std::numeric_limits<std::uint32_t>::max()));
    return list;
  });
  EXPECT_EQ(text, "[-2147483648, 2147483647, 2147483648, 4294967295, 0, 4294967295]");
}

TEST(Printed, FreesTheDocument) {
  const std::string text(test::kLarge, 'x');
  const std::size_t before = test::heapInUse();
  EXPECT_EQ(built([&] { return newString(text.c_str()); }).size(), text.size() + 2);
  EXPECT_LT(test::heapInUse(), before + test::kLarge);
}

TEST(Printed, WhatCannotBePrintedIsNotLeftOut) {
  cJSON invalid = {};
  EXPECT_THROW(printed(CJsonDocument(&invalid)), std::bad_alloc);
}

TEST(BuildCJson, CopiesNamesAndTexts) {
  std::string name = "name";
  std::string text = "text";
  CJsonDocument document = buildCJson([&] {
    cJSON* const object = newObject();
    addMember(object, name.c_str(), newString(text.c_str()));
    return object;
  });
  name = "gone";
  text = "gone";
  EXPECT_EQ(printed(std::move(document)), "{\n\t\"name\":\t\"text\"\n}");
}

TEST(BuildCJson, RefersToTextsOnRequest) {
  std::string text = "text";
  CJsonDocument document = buildCJson([&] { return newStringReference(text); });
  text[0] = 'n';
  EXPECT_EQ(printed(std::move(document)), "\"next\"");
}

TEST(BuildCJson, ATextEndsAtItsFirstZeroByte) {
  const std::string text("ab\0cd", 5);
  EXPECT_EQ(built([&] { return newStringReference(text); }), "\"ab\"");
}

TEST(BuildCJson, KeepsANameThatIsThereAlready) {
  EXPECT_EQ(built([] {
              cJSON* const object = newObject();
              addMember(object, "a", newNumber(1));
              addMember(object, "a", newNumber(2));
              return object;
            }),
            "{\n\t\"a\":\t1,\n\t\"a\":\t2\n}");
}

TEST(BuildCJson, OneInsideTheOtherKeepsTheirValuesApart) {
  std::string inner;
  const std::string outer = built([&] {
    cJSON* const list = newArray();
    addElement(list, newString("before"));
    inner = built([] { return newString("inner"); });
    const CJsonDocument parsed = parseCJson("[1]");
    addElement(list, newNumber(parsed->child->valueint));
    addElement(list, newString("after"));
    return list;
  });
  EXPECT_EQ(inner, "\"inner\"");
  EXPECT_EQ(outer, "[\"before\", 1, \"after\"]");
}

TEST(BuildCJson, NothingIsMadeOutsideOfADocument) {
  EXPECT_THROW(newObject(), std::logic_error);
  EXPECT_THROW(newString("x"), std::logic_error);
  EXPECT_EQ(built([] { return newString("x"); }), "\"x\"");
  EXPECT_THROW(newObject(), std::logic_error);
}

TEST(BuildCJson, AThrowLeavesNothingBehind) {
  const std::size_t before = test::heapInUse();
  EXPECT_THROW(buildCJson([]() -> cJSON* {
                 newString(std::string(test::kLarge, 'x').c_str());
                 throw std::runtime_error("half way");
               }),
               std::runtime_error);
  EXPECT_LT(test::heapInUse(), before + test::kLarge);
  EXPECT_THROW(newObject(), std::logic_error);
}

/// Calls `make` until memory runs out, which it must after the given number of pieces.
template <typename Make>
void expectToRunOut(std::size_t pieces, Make make) {
  constexpr int kMoreThanFit = 100000;
  const test::FailingMemory exhausted(pieces);
  EXPECT_THROW(buildCJson([&] {
                 cJSON* const list = newArray();
                 for (int count = 0; count < kMoreThanFit; ++count) {
                   make(list);
                 }
                 return list;
               }),
               std::bad_alloc)
      << pieces;
}

TEST(BuildCJson, NoCallGoesOnWithoutMemory) {
  const std::string text(100, 'x');
  for (const std::size_t pieces : {1U, 2U, 5U}) {
    expectToRunOut(pieces, [](cJSON* list) { addElement(list, newObject()); });
    expectToRunOut(pieces, [](cJSON* list) { addElement(list, newArray()); });
    expectToRunOut(pieces, [](cJSON* list) { addElement(list, newNumber(1)); });
    expectToRunOut(pieces, [](cJSON* list) { addElement(list, newNumber(1U)); });
    expectToRunOut(pieces, [](cJSON* list) { addElement(list, newNumberText(1)); });
    expectToRunOut(pieces, [&](cJSON* list) { addElement(list, newString(text.c_str())); });
    expectToRunOut(pieces, [&](cJSON* list) { addElement(list, newStringReference(text)); });
  }
}

TEST(BuildCJson, ANameWithoutMemoryIsNotLeftOut) {
  const std::string name(1000000, 'n');
  const test::FailingMemory exhausted(1);
  EXPECT_THROW(buildCJson([&] {
                 cJSON* const object = newObject();
                 addMember(object, name.c_str(), newNumber(1));
                 return object;
               }),
               std::bad_alloc);
  EXPECT_TRUE(exhausted.hasFailed());
}

TEST(BuildCJson, RunsOutOfMemoryBeforeItBegins) {
  const test::FailingMemory exhausted(0);
  EXPECT_THROW(buildCJson([] { return newObject(); }), std::bad_alloc);
}

}  // namespace
}  // namespace quenfold
