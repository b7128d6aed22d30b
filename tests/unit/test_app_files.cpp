#include <gtest/gtest.h>
#include <unistd.h>

#include <new>
#include <string>

#include "app/files.h"
#include "app/limits.h"
#include "json/plain_run.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

TEST(ReadFile, DropsNewlinesAlone) {
  const test::ScratchFolder scratch;
  EXPECT_EQ(readFile(scratch.file("two", "a\nb\n")), "ab");
  EXPECT_EQ(readFile(scratch.file("last", "a\n\n\nb")), "ab");
  EXPECT_EQ(readFile(scratch.file("dos", "a\r\nb")), "a\rb");
  EXPECT_EQ(readFile(scratch.file("empty", "")), "");
  EXPECT_EQ(readFile(scratch.file("bytes", std::string_view("\0\xff\n\x80", 4))),
            std::string("\0\xff\x80", 3));
}

TEST(ReadFile, LeavesRoomForTheParsersPadding) {
  const test::ScratchFolder scratch;
  const std::string bytes(100000, 'x');
  const std::string text = readFile(scratch.file("text", bytes));
  EXPECT_GE(text.capacity(), bytes.size() + kScanPadding);
}

TEST(ReadFile, ReadsMoreThanOneChunk) {
  const test::ScratchFolder scratch;
  std::string bytes;
  std::string expected;
  for (int line = 0; line < 40000; ++line) {
    bytes += std::to_string(line) + '\n';
    expected += std::to_string(line);
  }
  ASSERT_GT(bytes.size(), 200000U);
  EXPECT_EQ(readFile(scratch.file("long", bytes)), expected);
}

TEST(ReadFile, NamesAMissingFile) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("none.json");
  EXPECT_EQ(test::messageOf([&] { readFile(path); }), "error while opening file: " + path);
}

TEST(ReadFile, NamesADirectoryAsUnreadable) {
  const test::ScratchFolder scratch;
  EXPECT_EQ(test::messageOf([&] { readFile(scratch.path()); }),
            "error while reading file: " + scratch.path());
}

TEST(ReadFile, MakesRoomAtOnceForAFileDated2040) {
  const test::ScratchFolder scratch;
  const std::string bytes(200001, 'x');
  const std::string path = scratch.file("late", bytes);
  test::date2040(path);
  const std::string text = readFile(path);
  EXPECT_EQ(text, bytes);
  // Without its size the text would have grown by doubling, to 262144 bytes.
  EXPECT_LT(text.capacity(), 201000U);
}

TEST(ReadFile, RunsOutOfMemoryForAFileBeyondTheAddressSpace) {
  if (sizeof(std::size_t) > 4) {
    GTEST_SKIP() << "no file is larger than a text may be";
  }
  const test::ScratchFolder scratch;
  const std::string path = scratch.file("large", "");
  ASSERT_EQ(truncate(path.c_str(), 5000000000), 0);
  EXPECT_THROW(readFile(path), std::bad_alloc);
}

TEST(ReadFile, RefusesAFileBeyondTheLimitBeforeItReads) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.file("large", "");
  ASSERT_EQ(truncate(path.c_str(), static_cast<off_t>(kMaxTextBytes + 1)), 0);
  EXPECT_EQ(test::messageOf([&] { readFile(path); }), "file too large: " + path);
}

TEST(WriteFile, WritesTheBytesAsTheyAre) {
  const test::ScratchFolder scratch;
  const std::string bytes("\0a\n\xff", 4);
  writeFile(scratch.path("out"), bytes);
  EXPECT_EQ(scratch.bytesOf("out"), bytes);
}

TEST(WriteFile, TruncatesAnExistingFile) {
  const test::ScratchFolder scratch;
  writeFile(scratch.file("out", "something long"), "");
  EXPECT_EQ(scratch.bytesOf("out"), "");
}

TEST(WriteFile, NamesAPathThatCannotBeOpened) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("missing/out");
  EXPECT_EQ(test::messageOf([&] { writeFile(path, "x"); }), "error while opening file: " + path);
}

TEST(WriteFile, NoticesAFullDiskForOneByteAndForMany) {
  EXPECT_EQ(test::messageOf([] { writeFile("/dev/full", "x"); }),
            "error while writing file: /dev/full");
  EXPECT_EQ(test::messageOf([] { writeFile("/dev/full", std::string(1000000, 'x')); }),
            "error while writing file: /dev/full");
}

/// The descriptor that the next opened file gets.
int nextDescriptor() {
  const int lowestFree = dup(STDERR_FILENO);
  close(lowestFree);
  return lowestFree;
}

TEST(Files, AreClosedOnEveryWayOutAndNoOthersAre) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("file");
  const int before = nextDescriptor();
  writeFile(path, "x");
  readFile(path);
  EXPECT_THROW(readFile(scratch.path()), std::runtime_error);
  EXPECT_THROW(writeFile("/dev/full", "x"), std::runtime_error);
  OutputFile(path).close();
  { const OutputFile leftOpen(path); }
  EXPECT_EQ(nextDescriptor(), before);
}

TEST(JoinPath, AlwaysInsertsTheSlash) {
  EXPECT_EQ(joinPath("dir", "a"), "dir/a");
  EXPECT_EQ(joinPath("dir/", "a"), "dir//a");
  EXPECT_EQ(joinPath("dir", "/a"), "dir//a");
  EXPECT_EQ(joinPath("", "a"), "a");
  EXPECT_EQ(joinPath("dir", ""), "dir/");
}

TEST(OutputFile, WritesPiecesInOrderAndTellsTheirLength) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.file("out", "something long");
  OutputFile out(path);
  EXPECT_EQ(scratch.bytesOf("out"), "");
  out.append("ab");
  out.append("");
  out.append('\n');
  EXPECT_EQ(out.size(), 3U);
  EXPECT_EQ(scratch.bytesOf("out"), "") << "pieces are kept back";
  out.close();
  EXPECT_EQ(scratch.bytesOf("out"), "ab\n");
  EXPECT_EQ(out.size(), 3U);
}

TEST(OutputFile, KeepsBackUpToAChunk) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("out");
  const std::string chunk(65536, 'x');
  OutputFile out(path);
  const auto written = [&] { return scratch.bytesOf("out"); };
  out.append("y");
  out.append(chunk);
  EXPECT_EQ(written(), "y");
  out.append('z');
  EXPECT_EQ(written(), "y" + chunk);
  out.append(chunk.substr(1));
  EXPECT_EQ(written(), "y" + chunk) << "it fits what is left";
  out.append(chunk + "!");
  EXPECT_EQ(written(), "y" + chunk + 'z' + chunk.substr(1) + chunk + "!");
  EXPECT_EQ(out.size(), 3 * chunk.size() + 2);
}

TEST(OutputFile, LosesNothingWherePiecesMeetTheEndOfAChunk) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("out");
  for (const std::size_t length : {1U, 7U, 65535U, 65536U, 65537U, 200000U}) {
    std::string expected;
    OutputFile out(path);
    while (expected.size() < 400000) {
      const std::string piece(length, static_cast<char>('a' + expected.size() % 26));
      expected += piece + '.';
      out.append(piece);
      out.append('.');
    }
    out.close();
    EXPECT_EQ(scratch.bytesOf("out"), expected) << length;
    EXPECT_EQ(out.size(), expected.size());
  }
}

TEST(OutputFile, LeavesWhatWasNotClosedCutShort) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("out");
  {
    OutputFile out(path);
    out.append(std::string(70000, 'x'));
    out.append("kept back");
  }
  EXPECT_EQ(scratch.bytesOf("out"), std::string(70000, 'x'));
}

TEST(OutputFile, NamesTheFileThatFails) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("no/out");
  EXPECT_EQ(test::messageOf([&] { const OutputFile out(path); }),
            "error while opening file: " + path);
  const std::string full = "/dev/full";
  OutputFile one(full);
  one.append('x');
  EXPECT_EQ(test::messageOf([&] { one.close(); }), "error while writing file: /dev/full");
  OutputFile much(full);
  EXPECT_EQ(test::messageOf([&] { much.append(std::string(1000000, 'x')); }),
            "error while writing file: /dev/full");
}

}  // namespace
}  // namespace quenfold
