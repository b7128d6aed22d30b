#include <gtest/gtest.h>

#include "matrices/port_string.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

std::string splitMessage(std::string_view text) {
  return test::messageOf([text] { splitPort(text); });
}

std::string parseMessage(std::string_view text) {
  return test::messageOf([text] { parsePortString(text); });
}

TEST(SplitPort, CutsFiveParts) {
  const SplitPort port = splitPort("Frame1.slot2.mixer-in[3].audio.ch2");
  EXPECT_EQ(port.device, "Frame1");
  EXPECT_EQ(port.slot, "slot2");
  EXPECT_EQ(port.port, "mixer-in[3]");
  EXPECT_EQ(port.type, "audio");
  EXPECT_EQ(port.ch, 2);
}

TEST(SplitPort, AcceptsEmptyParts) {
  const SplitPort port = splitPort("..in[1].t.ch1");
  EXPECT_EQ(port.device, "");
  EXPECT_EQ(port.slot, "");
  EXPECT_EQ(port.port, "in[1]");
  EXPECT_EQ(splitPort("....ch0").type, "");
}

TEST(SplitPort, ReadsTheChannelAsStrtolDoes) {
  EXPECT_EQ(splitPort("a.b.c.d.ch1").ch, 1);
  EXPECT_EQ(splitPort("a.b.c.d.ch1.x").ch, 1);
  EXPECT_EQ(splitPort("a.b.c.d.ch +3zz").ch, 3);
  EXPECT_EQ(splitPort("a.b.c.d.ch-2").ch, -2);
  EXPECT_EQ(splitPort("a.b.c.d.ch007").ch, 7);
  EXPECT_EQ(splitPort("a.b.c.d.ch2147483647").ch, 2147483647);
}

TEST(SplitPort, ReportsAMissingDevice) {
  EXPECT_EQ(splitMessage("abc"), "splitPort - no device.");
  EXPECT_EQ(splitMessage(""), "splitPort - no device.");
}

TEST(SplitPort, ReportsTooFewDotsAsABadChannel) {
  for (const char* text : {"a.b", "a.b.c", "a.b.c.d", ".", "...", "a.b.c.ch1"}) {
    EXPECT_EQ(splitMessage(text), "Bad ch string") << text;
  }
}

TEST(SplitPort, ReportsABadChannel) {
  for (const char* text :
       {"a.b.c.d.e.ch1", "a.b.c.d.ch", "a.b.c.d.c1", "a.b.c.d.", "a.b.c.d.Ch1", "a.b.c.d. ch1"}) {
    EXPECT_EQ(splitMessage(text), "Bad ch string") << text;
  }
}

TEST(SplitPort, ReportsABadChannelNumber) {
  for (const char* text : {"a.b.c.d.chx", "a.b.c.d.ch.1", "a.b.c.d.ch2147483648"}) {
    EXPECT_EQ(splitMessage(text), "PortString number error") << text;
  }
}

TEST(SplitPort, NeverReadsPastTheView) {
  const std::string text = "a.b.c.d.ch12";
  EXPECT_EQ(splitPort(std::string_view(text).substr(0, 11)).ch, 1);
}

TEST(ParsePortString, TakesTheNumberOut) {
  EXPECT_EQ(parsePortString("mixer-in[3]"), (PortString{"mixer-in[]", 3}));
  EXPECT_EQ(parsePortString("x[4]a"), (PortString{"x[]a", 4}));
  EXPECT_EQ(parsePortString("[5]"), (PortString{"[]", 5}));
  EXPECT_EQ(parsePortString("a]b[6]"), (PortString{"a]b[]", 6}));
  EXPECT_EQ(parsePortString("a[7][8]"), (PortString{"a[][8]", 7}));
}

TEST(ParsePortString, ReadsTheNumberAsStrtolDoes) {
  EXPECT_EQ(parsePortString("in[ 7]"), (PortString{"in[]", 7}));
  EXPECT_EQ(parsePortString("in[ +7]"), (PortString{"in[]", 7}));
  EXPECT_EQ(parsePortString("in[-1]"), (PortString{"in[]", -1}));
  EXPECT_EQ(parsePortString("in[03]"), (PortString{"in[]", 3}));
  EXPECT_EQ(parsePortString("in[0x10]"), (PortString{"in[]", 0}));
  EXPECT_EQ(parsePortString("in[3junk]x"), (PortString{"in[]x", 3}));
}

TEST(ParsePortString, ReportsEachFault) {
  EXPECT_EQ(parseMessage("in3"), "PortString '[' not found");
  EXPECT_EQ(parseMessage(""), "PortString '[' not found");
  EXPECT_EQ(parseMessage("in[3"), "PortString ']' not found");
  EXPECT_EQ(parseMessage("a]in[3"), "PortString ']' not found");
  EXPECT_EQ(parseMessage("in[x]"), "PortString number error");
  EXPECT_EQ(parseMessage("in[]"), "PortString number error");
  EXPECT_EQ(parseMessage("in[2147483648]"), "PortString number error");
}

TEST(PortString, EqualsByNameAndNumber) {
  EXPECT_FALSE((PortString{"in[]", 1}) == (PortString{"in[]", 2}));
  EXPECT_FALSE((PortString{"in[]", 1}) == (PortString{"out[]", 1}));
}

TEST(ClassifyPortType, KnowsEveryPrefix) {
  for (const char* name :
       {"in[]", "AUXA-in[]", "AUXB-in[]", "disconnect[]", "passthrough-1[]", "layout:2x2[]",
        "mixer-out[]", "mixerd-out[]", "virt-in[]", "disconnect"}) {
    EXPECT_EQ(classifyPortType(name), Direction::kSource) << name;
  }
  for (const char* name : {"out[]", "AUXA-out[]", "AUXB-out[]", "pip[]", "pipe[]", "head1[]",
                           "mixer-in[]", "virt-out[]"}) {
    EXPECT_EQ(classifyPortType(name), Direction::kDestination) << name;
  }
  for (const char* name : {"inx[]", "in", "", "IN[]", "mixerd-in[]", "AUXC-in[]", "layout[]",
                           "xin[]", "mixer-[]", "disconnec"}) {
    EXPECT_EQ(classifyPortType(name), Direction::kUnknown) << name;
  }
}

}  // namespace
}  // namespace quenfold
