#include <gtest/gtest.h>

#include <stdexcept>

#include "matrices/port_printer.h"
#include "support/scratch.h"

namespace quenfold::unpacking {
namespace {

constexpr std::int32_t kLargestNumber = 2147483647;

std::string formatPort(std::string_view pattern, std::int32_t number) {
  std::string text;
  appendPort(text, splitPattern(pattern), number);
  return text;
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

TEST(AppendPort, FormatsEveryKind) {
  EXPECT_EQ(formatPort("plain", 3), "plain");
  EXPECT_EQ(formatPort("in[{}]", -2147483647 - 1), "in[-2147483648]");
  EXPECT_EQ(formatPort("a}}b{:>3}", 7), "a}b  7");
  for (const char* bad : {"x{", "}x", "{}{}", "{1}", "{}{", "{:q}"}) {
    EXPECT_NE(test::messageOf([&] { formatPort(bad, 1); }), "") << bad;
  }
}

TEST(AppendPort, LeavesWhatIsThere) {
  std::string text = "D.";
  appendPort(text, splitPattern("x"), 1);
  appendPort(text, splitPattern("[{}]"), 2);
  appendPort(text, splitPattern("{:>2}"), 3);
  EXPECT_EQ(text, "D.x[2] 3");
}

TEST(AppendPort, AllocatesNothingWhereThereIsRoom) {
  for (const char* pattern : {"a port of some length without a number", "in[{}] of some length",
                              "{:>40}", "{0:b} and once more {0:b}"}) {
    std::string text;
    text.reserve(static_cast<std::size_t>(longestPortText(pattern, 1, kLargestNumber)));
    const char* const room = text.data();
    appendPort(text, splitPattern(pattern), kLargestNumber);
    EXPECT_EQ(text.data(), room) << pattern;
  }
}

TEST(LongestNumber, LooksAtBothEnds) {
  EXPECT_EQ(longestNumber(1, 9), 1U);
  EXPECT_EQ(longestNumber(9, 10), 2U);
  EXPECT_EQ(longestNumber(-kLargestNumber - 1, 0), 11U);
}

TEST(LongestPortText, IsExactWithoutSpecifications) {
  EXPECT_EQ(longestPortText("", 1, 1), 0U);
  EXPECT_EQ(longestPortText("in", 1, 1), 2U);
  EXPECT_EQ(longestPortText("in[{}", 1, 100), formatPort("in[{}]", 100).size());
}

TEST(LongestPortText, CountsWhatStandsInAFieldOnce) {
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

// A field with a colon is taken for 35 bytes (a sign, a prefix and 32 binary digits) and 4 for each
// character of its widths; the brace that closes it counts as text.
TEST(LongestPortText, AddsUpTheWidthsOfAField) {
  const auto width = [](std::uint64_t characters) { return 35 + 4 * characters + 1; };
  EXPECT_EQ(longestPortText("{:#b}", 1, 1), width(0));
  EXPECT_EQ(longestPortText("{:}", 1, 1), width(0));
  EXPECT_EQ(longestPortText("{:x}", 1, 1), width(0));
  EXPECT_EQ(longestPortText("{:>109}", 1, 1), width(109));
  EXPECT_EQ(longestPortText("{:4096}", 1, 1), width(4096));
  EXPECT_EQ(longestPortText("{::5}", 1, 1), width(5));
  EXPECT_EQ(longestPortText("{:/5}", 1, 1), width(5));
  EXPECT_EQ(longestPortText("{:5x3}", 1, 1), width(5 + 3));
  EXPECT_EQ(longestPortText("{:5{}3}", 1, 7), width(5 + 7 + 3));
  EXPECT_EQ(longestPortText("{0:{0}}", -9, 7), width(7));
  EXPECT_EQ(longestPortText("{0:{0}}", 0, 0), width(0));
  EXPECT_EQ(longestPortText("{0:{0}}", -9, -7), width(0));
  EXPECT_EQ(longestPortText("a{:2}b{:3}c", 1, 1), 1 + width(2) + 1 + width(3) + 1);
}

TEST(LongestPortText, TakesDoubledBracesForText) {
  EXPECT_EQ(longestPortText("{{x}}", 1, 1), 5U);
  EXPECT_EQ(longestPortText("{{{}}}", 1, 100), 2U + 3U + 3U);
}

TEST(LongestPortText, PassesOverTheFillOfAField) {
  const auto lengthWith = [](std::string_view fill) {
    return longestPortText(std::string("{:").append(fill).append("<400}"), 1, 1);
  };
  for (const char* fill :
       {"}", "{", "<", "\x7f", "\xc0}", "\xdf}", "\xe0}}", "\xef}}", "\xf0}}}", "\xf7}}}"}) {
    EXPECT_EQ(lengthWith(fill), 35U + 4 * 400 + 1) << fill;
  }
  // Where one character more stands than the first byte tells, the first brace closes the field.
  for (const char* fill : {"x}", "\x7f}", "\xbf}", "\xf8}", "\xff}", "x}}", "x}}}", "\xf8}}}"}) {
    EXPECT_EQ(lengthWith(fill), 35U + std::string_view(fill).size() - 1 + 5) << fill;
  }
}

TEST(LongestPortText, HoldsTheLongestNumberOfAll) {
  const std::size_t length = formatPort("{:+#b}", -kLargestNumber - 1).size();
  EXPECT_EQ(length, 35U);
  EXPECT_LE(length, longestPortText("{:+#b}", -kLargestNumber - 1, 0));
}

TEST(LongestPortText, TakesMalformedPatternsForWhatTheyHold) {
  EXPECT_EQ(longestPortText("x{", 1, 1), 2U);
  EXPECT_EQ(longestPortText("}x", 1, 1), 2U);
  EXPECT_EQ(longestPortText("{:{", 1, 1), 35U + 4 * 1);
  EXPECT_EQ(longestPortText("{:x", 1, 1), 35U);
  EXPECT_EQ(longestPortText("{:", 1, 1), 35U);
}

TEST(LongestPortText, RefusesWhatPadsToMore) {
  for (const char* pattern : {"{:4097}", "{:>1999999999}", "x{:>1999999999}[{}]", "{0:{0}}",
                              "{0:4096}{0:1}", "{:4294967297}", "{:18446744073709551617}",
                              "{:99999999999999999999999}", "{:}<4097}", "{:\xf0}}}>4097}"}) {
    EXPECT_EQ(test::messageOf([&] { longestPortText(pattern, 1, kLargestNumber); }),
              "port pattern too wide: more than 4096")
        << pattern;
  }
}

PortTypeGroup groupSpelled(std::string pattern) {
  PortTypeGroup group;
  group.port = std::move(pattern);
  return group;
}

TEST(PortPrinter, SpellsOneAfterTheOther) {
  const PortTypeGroup group = groupSpelled("in[{}]");
  const PortTypeGroup plain = groupSpelled("x");
  PortPrinter name(40);
  name.startBlock("Desk", {"A", &group, "audio", {}});
  name.startPort(10);
  EXPECT_EQ(name.onChannel(12), "Desk.A.in[10].audio.ch12");
  EXPECT_EQ(name.onChannel(3), "Desk.A.in[10].audio.ch3");
  name.startPort(-2147483647 - 1);
  EXPECT_EQ(name.onChannel(-1), "Desk.A.in[-2147483648].audio.ch-1");
  name.startPort(1);
  EXPECT_EQ(name.onChannel(0), "Desk.A.in[1].audio.ch0");
  name.startBlock("", {"", &plain, "", {}});
  name.startPort(1);
  EXPECT_EQ(name.onChannel(2), "..x..ch2");
}

TEST(PortPrinter, UsesTheFormatterForOtherPatterns) {
  const PortTypeGroup group = groupSpelled("{0:>4}{{{0}");
  PortPrinter name(100);
  name.startBlock("D", {"A", &group, "t", {}});
  name.startPort(7);
  EXPECT_EQ(name.onChannel(1), "D.A.   7{7.t.ch1");
}

TEST(PortPrinter, AllocatesNothingForNamesOfTheLengthToldBefore) {
  const PortTypeGroup group = groupSpelled("some port[{:>8}]");
  PortPrinter name(62);
  name.startBlock("Device", {"slot", &group, "a long type of signal", {}});
  name.startPort(1);
  const char* const room = name.onChannel(1).data();
  name.startPort(2147483647);
  EXPECT_EQ(name.onChannel(1000).size(), 62U);
  EXPECT_EQ(name.onChannel(1000).data(), room);
}

TEST(PortPrinter, ThrowsForABadPatternOnceAPortIsSpelled) {
  const PortTypeGroup group = groupSpelled("x{[{}]");
  PortPrinter name(100);
  name.startBlock("D", {"A", &group, "t", {}});
  EXPECT_NE(test::messageOf([&] { name.startPort(1); }), "");
}

}  // namespace
}  // namespace quenfold::unpacking
