#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "json/writer.h"
#include "support/heap.h"
#include "support/scratch.h"
#include "support/texts.h"

namespace quenfold {
namespace {

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

TEST(PrettyJsonWriter, WritesPlainAndEscapedTexts) {
  JsonBuffer buffer;
  PrettyJsonWriter writer(buffer);
  writer.StartObject();
  writeKey(writer, "a key of sixteen");
  writeString(writer, "");
  writeKey(writer, "k\"");
  writeString(writer, "0123456789abcdef\x01\\\xc3\xa9");
  writer.EndObject();
  EXPECT_EQ(textOf(buffer),
            "{\n    \"a key of sixteen\": \"\",\n"
            "    \"k\\\"\": \"0123456789abcdef\\u0001\\\\\xc3\xa9\"\n}");
}

TEST(TextOf, AllocatesNothingForAFullBuffer) {
  JsonBuffer buffer;
  const std::string bytes(JsonBuffer::kDefaultCapacity, 'x');
  std::copy(bytes.begin(), bytes.end(), buffer.Push(bytes.size()));
  ASSERT_EQ(buffer.stack_.GetCapacity(), bytes.size());
  EXPECT_EQ(textOf(buffer), bytes);
  EXPECT_EQ(buffer.stack_.GetCapacity(), bytes.size());
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
      const auto twice = [&](const std::string& special) {
        return fmt::format("{0}{1}{0}{1}", plain, special);
      };
      EXPECT_EQ(writtenText(twice(std::string(1, static_cast<char>(byte)))),
                fmt::format(R"(["{}"])", twice(escape)))
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

}  // namespace
}  // namespace quenfold
