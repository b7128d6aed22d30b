#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "json/document.h"
#include "support/heap.h"
#include "support/scratch.h"
#include "support/texts.h"

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

TEST(PrettyJsonWriter, WritesMembersOnLinesAndListsOnOne) {
  JsonBuffer buffer;
  PrettyJsonWriter writer(buffer);
  writer.StartObject();
  writeKey(writer, "plain");
  writeString(writer, "text");
  writeKey(writer, "");
  writer.StartArray();
  writeString(writer, "a");
  writeString(writer, "");
  writeString(writer, "b\n");
  writer.EndArray();
  writeKey(writer, "q\"");
  writer.Int(7);
  writer.EndObject();
  EXPECT_EQ(textOf(buffer), R"({
    "plain": "text",
    "": ["a", "", "b\n"],
    "q\"": 7
})");
}

/// A list of one text, as it stands in a file.
std::string writtenText(std::string_view text) {
  CompactJsonWriter writer;
  return test::textOf([&](OutputFile& out) {
    writer.startText(out);
    writer.StartArray();
    writeString(writer, text);
    writer.EndArray();
  });
}

std::string escapeOf(unsigned char byte) {
  constexpr std::string_view kNamed = "\"\\\b\f\n\r\t";
  constexpr std::string_view kLetters = "\"\\bfnrt";
  const std::size_t named = kNamed.find(static_cast<char>(byte));
  if (named != std::string_view::npos) {
    return std::string("\\") + kLetters[named];
  }
  return byte < 0x20 ? fmt::format("\\u{:04X}", byte) : std::string(1, static_cast<char>(byte));
}

TEST(CompactJsonWriter, EscapesWhatJsonDemandsAndNoOtherByte) {
  EXPECT_EQ(writtenText(""), R"([""])");
  for (unsigned byte = 0; byte < 256; ++byte) {
    const std::string escape = escapeOf(static_cast<unsigned char>(byte));
    for (const std::size_t length : {0U, 1U, 7U, 8U, 30U}) {
      const std::string plain(length, 'x');
      EXPECT_EQ(writtenText(plain + static_cast<char>(byte) + plain + static_cast<char>(byte)),
                "[\"" + plain + escape + plain + escape + "\"]")
          << byte;
    }
  }
}

TEST(CompactJsonWriter, WritesOneTextAfterTheOther) {
  CompactJsonWriter writer;
  const auto write = [&](OutputFile& out) {
    writer.startText(out);
    writer.StartObject();
    writeKey(writer, "a\n");
    writer.StartArray();
    writer.Int(-1);
    writer.StartObject();
    writer.EndObject();
    writer.EndArray();
    writeKey(writer, "b");
    writeString(writer, "c");
    writer.EndObject();
  };
  EXPECT_EQ(test::textOf(write), R"({"a\n":[-1,{}],"b":"c"})");
  EXPECT_EQ(test::textOf(write), R"({"a\n":[-1,{}],"b":"c"})");
}

TEST(CompactJsonWriter, AllocatesNothingOnceConstructed) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("out");
  CompactJsonWriter writer;
  OutputFile out(path);
  const std::size_t before = test::heapInUse();
  writer.startText(out);
  for (int level = 0; level < 8; ++level) {
    writer.StartArray();
  }
  writeString(writer, "a text of any length");
  EXPECT_EQ(test::heapInUse(), before);
}

TEST(JsonLength, RefusesWhatTheLibraryCannotCount) {
  EXPECT_EQ(jsonLength(0xFFFFFFFF), 0xFFFFFFFF);
  EXPECT_THROW(jsonLength(0x100000000), std::length_error);
}

TEST(TextOf, AllocatesNothingForAFullBuffer) {
  JsonBuffer buffer;
  const std::string bytes(JsonBuffer::kDefaultCapacity, 'x');
  std::copy(bytes.begin(), bytes.end(), buffer.Push(bytes.size()));
  ASSERT_EQ(buffer.stack_.GetCapacity(), bytes.size());
  EXPECT_EQ(textOf(buffer), bytes);
  EXPECT_EQ(buffer.stack_.GetCapacity(), bytes.size());
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
