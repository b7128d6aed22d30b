#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include "json/document.h"
#include "json/plain_run.h"

namespace quenfold {
namespace {

/// One odd character at every distance from the beginning, behind plain ones of every kind.
std::string textWith(std::size_t position, char odd) {
  std::string text;
  for (std::size_t i = 0; i < position; ++i) {
    text += "a \x7f\x80\xff!#[]\xa2\xdc"[i % 11];
  }
  return text + odd + "aaaa";
}

TEST(PlainRun, EndsAtTheCharactersThatJsonTakesForMore) {
  for (int value = 0; value < 256; ++value) {
    const char odd = static_cast<char>(value);
    const bool ends = value < 0x20 || odd == '"' || odd == '\\';
    for (std::size_t position = 0; position < 40; ++position) {
      std::string text = textWith(position, odd);
      const std::size_t expected = ends ? position : text.size();
      EXPECT_EQ(plainRunLength(text), expected) << value;
      text.resize(text.size() + kScanPadding);
      EXPECT_EQ(plainRunEnd(text.data()) - text.data(), static_cast<std::ptrdiff_t>(expected));
    }
  }
}

TEST(PlainRun, EndsWithTheTextThatItFills) {
  const std::string text = "0123456789abcdef0123\"";
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_EQ(plainRunLength(std::string_view(text).substr(0, length)), length);
  }
}

/// A page behind which nothing may be read.
class GuardedPage {
 public:
  GuardedPage()
      : size_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
        pages_(static_cast<char*>(
            mmap(nullptr, 2 * size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
    mprotect(end(), size_, PROT_NONE);
  }
  ~GuardedPage() { munmap(pages_, 2 * size_); }
  GuardedPage(const GuardedPage&) = delete;
  GuardedPage& operator=(const GuardedPage&) = delete;

  [[nodiscard]] char* end() const { return pages_ + size_; }

 private:
  std::size_t size_;
  char* pages_;
};

TEST(PlainRun, ReadsNoFurtherThanItSays) {
  const GuardedPage page;
  for (std::size_t length = 0; length < 40; ++length) {
    char* const text = page.end() - length;
    std::fill(text, page.end(), 'a');
    EXPECT_EQ(plainRunLength({text, length}), length);
    char* const padded = text - 1 - kScanPadding;
    std::fill(padded, page.end(), 'a');
    padded[length] = '\0';
    EXPECT_EQ(plainRunEnd(padded), padded + length);
  }
}

TEST(PlainRun, EndsAtTheFirstOfSeveral) {
  const std::string text = std::string("ab\"\\\x1f\x01") + std::string(kScanPadding, '\0');
  EXPECT_EQ(plainRunEnd(text.data()) - text.data(), 2);
  EXPECT_EQ(plainRunLength(text), 2U);
}

std::string stringOf(std::string json) {
  const JsonDocument document = parseJson(json);
  return document.IsString() ? document.GetString() : "not a string";
}

TEST(ParseJson, DecodesEscapesBetweenRuns) {
  EXPECT_EQ(stringOf(R"("0123456789abcdef\n0123456789abcdefg\u00e9\"x")"),
            "0123456789abcdef\n0123456789abcdefg\u00e9\"x");
  EXPECT_EQ(stringOf(R"("\\\\a\/")"), "\\\\a/");
  EXPECT_EQ(stringOf("\"\""), "");
}

TEST(ParseJson, RefusesEveryControlCharacterInAString) {
  for (char control = 1; control < 0x20; ++control) {
    for (const std::size_t position : {0U, 3U, 7U, 15U, 16U, 33U}) {
      const std::string text = textWith(position, control);
      EXPECT_EQ(stringOf("\"" + text + "\""), "not a string") << int{control} << ' ' << position;
    }
  }
}

TEST(ParseJson, EndsAtAZeroByte) {
  EXPECT_EQ(stringOf(std::string("\"ab\"\0x", 6)), "ab");
  EXPECT_EQ(stringOf(std::string("\"ab\0c\"", 6)), "not a string");
}

TEST(ParseJson, LeavesTheTextItsSize) {
  std::string text = "[1]";
  static_cast<void>(parseJson(text));
  EXPECT_EQ(text.size(), 3U);
}

}  // namespace
}  // namespace quenfold
