#include <gtest/gtest.h>

#include <stdexcept>

#include "matrices/port_pattern.h"
#include "support/scratch.h"

namespace quenfold::unpacking {
namespace {

constexpr std::int32_t kLargest = 2147483647;

std::string formatPort(std::string_view text, std::int32_t number) {
  const PortPattern pattern = splitPattern(text);
  std::string room(40000, '*');
  char* const end = printPort(pattern, number, room.data(), room.data() + room.size());
  room.resize(static_cast<std::size_t>(end - room.data()));
  return std::string(pattern.front).append(room).append(pattern.back);
}

TEST(SplitPattern, LeavesToTheFormatterWhatIsNoTextAroundOneNumber) {
  using Kind = PortPattern::Kind;
  for (const char* text : {"", "plain", "in[]"}) {
    EXPECT_EQ(splitPattern(text).kind, Kind::kText) << text;
  }
  for (const char* text : {"{}", "in[{}]", "{}x"}) {
    EXPECT_EQ(splitPattern(text).kind, Kind::kNumber) << text;
  }
  for (const char* text : {"{", "}", "{0}", "{:}", "}{", "{}{}", "{{}}", "{}}", "{}{", "x}}{}"}) {
    EXPECT_EQ(splitPattern(text).kind, Kind::kFormat) << text;
  }
}

TEST(PrintPort, FormatsEveryKind) {
  EXPECT_EQ(formatPort("plain", 3), "plain");
  EXPECT_EQ(formatPort("in[{}]", -2147483647 - 1), "in[-2147483648]");
  EXPECT_EQ(formatPort("a}}b{:>3}", 7), "a}b  7");
  for (const char* bad : {"x{", "}x", "{}{}", "{1}", "{}{", "{:q}"}) {
    EXPECT_NE(test::messageOf([&] { formatPort(bad, 1); }), "") << bad;
  }
}

TEST(PrintPort, KeepsToTheLimit) {
  for (const char* text : {"{:>5}", "{}"}) {
    std::string room = "......";
    EXPECT_EQ(test::messageOf(
                  [&] { printPort(splitPattern(text), 12345, room.data(), room.data() + 4); }),
              "port name too long")
        << text;
    EXPECT_EQ(room.substr(4), "..") << text;
    char* const end = printPort(splitPattern(text), 12345, room.data(), room.data() + 5);
    EXPECT_EQ(end, room.data() + 5) << text;
    EXPECT_EQ(room, "12345.") << text;
  }
}

TEST(LongestNumber, LooksAtBothEnds) {
  EXPECT_EQ(longestNumber(1, 9), 1U);
  EXPECT_EQ(longestNumber(9, 10), 2U);
  EXPECT_EQ(longestNumber(-kLargest - 1, 0), 11U);
}

TEST(LongestPortText, IsExactWithoutSpecifications) {
  EXPECT_EQ(longestPortText("", 1, 1), 0U);
  EXPECT_EQ(longestPortText("in", 1, 1), 2U);
  EXPECT_EQ(longestPortText("in[{}", 1, 100), formatPort("in[{}]", 100).size());
}

TEST(LongestPortText, CountsWhatStandsInAPlaceOnce) {
  EXPECT_EQ(longestPortText("in[{0}]", 1, 100), 8U);  // "in[", "100", a closing brace and "]"
}

TEST(LongestPortText, IsNeverTooShort) {
  for (const char* pattern :
       {"in[{}]",        "{0}{0}",         "{{{}}}",        "x{:#b}",    "{:>20}",
        "{:0>20}",       "{0:{0}}",        "{:\xc3\xa9^9}", "a}}b",      "{:+d}",
        "{:4096}",       "{:}<400}",       "{:}>400}}}",    "{0:}^{0}}", "{:\xc3}<400}",
        "{:\xe2}}<400}", "{:\xf0{}}<400}", "{:\xf8<400}",   "{:x}<",     "{0:}{0:x<400}"}) {
    for (const std::int32_t number : {0, 7, 4096}) {
      EXPECT_LE(formatPort(pattern, number).size(), longestPortText(pattern, 0, number))
          << pattern << ' ' << number;
    }
  }
}

TEST(LongestPortText, TakesMalformedPatternsForWhatTheyHold) {
  EXPECT_EQ(longestPortText("x{", 1, 1), 2U);
  EXPECT_EQ(longestPortText("}x", 1, 1), 2U);
  EXPECT_GE(longestPortText("{:{", 1, 1), 1U);
}

TEST(LongestPortText, RefusesWhatPadsToMore) {
  for (const char* pattern :
       {"{:4097}", "{:>1999999999}", "x{:>1999999999}[{}]", "{0:{0}}", "{0:4096}{0:1}",
        "{:99999999999999999999999}", "{:}<4097}", "{:\xf0}}}>4097}"}) {
    EXPECT_EQ(test::messageOf([&] { longestPortText(pattern, 1, kLargest); }),
              "port pattern too wide: more than 4096")
        << pattern;
  }
}

}  // namespace
}  // namespace quenfold::unpacking
