#include <gtest/gtest.h>

#include "matrices/port_name.h"
#include "support/scratch.h"

namespace quenfold::unpacking {
namespace {

PortTypeGroup groupOf(std::string pattern) {
  PortTypeGroup group;
  group.port = std::move(pattern);
  return group;
}

TEST(PortName, SpellsOneAfterTheOther) {
  const PortTypeGroup group = groupOf("in[{}]");
  const PortTypeGroup plain = groupOf("x");
  PortName name(40);
  name.startFamily("Desk", {"A", &group, "audio", {}});
  name.startPort(10);
  EXPECT_EQ(name.onChannel(12), "Desk.A.in[10].audio.ch12");
  EXPECT_EQ(name.onChannel(3), "Desk.A.in[10].audio.ch3");
  name.startPort(-2147483647 - 1);
  EXPECT_EQ(name.onChannel(-1), "Desk.A.in[-2147483648].audio.ch-1");
  name.startPort(1);
  EXPECT_EQ(name.onChannel(0), "Desk.A.in[1].audio.ch0");
  name.startFamily("", {"", &plain, "", {}});
  name.startPort(1);
  EXPECT_EQ(name.onChannel(2), "..x..ch2");
}

TEST(PortName, UsesTheFormatterForOtherPatterns) {
  const PortTypeGroup group = groupOf("{0:>4}{{{0}");
  PortName name(100);
  name.startFamily("D", {"A", &group, "t", {}});
  name.startPort(7);
  EXPECT_EQ(name.onChannel(1), "D.A.   7{7.t.ch1");
}

TEST(PortName, KeepsRoomForWhatComesBehindTheNumber) {
  const PortTypeGroup group = groupOf("{:>4}");
  const PortFamily family = {"A", &group, "t", {9, 10}};
  PortName exact(15);
  exact.startFamily("D", family);
  exact.startPort(7);
  EXPECT_EQ(exact.onChannel(10), "D.A.   7.t.ch10");
  PortName tooShort(14);
  tooShort.startFamily("D", family);
  EXPECT_EQ(test::messageOf([&] { tooShort.startPort(7); }), "port name too long");
}

TEST(PortName, ThrowsForABadPatternOnceAPortIsSpelled) {
  const PortTypeGroup group = groupOf("x{[{}]");
  PortName name(100);
  name.startFamily("D", {"A", &group, "t", {}});
  EXPECT_NE(test::messageOf([&] { name.startPort(1); }), "");
}

}  // namespace
}  // namespace quenfold::unpacking
