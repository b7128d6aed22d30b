#include <gtest/gtest.h>

#include "database/device_lines.h"
#include "support/port_trees.h"

namespace quenfold::database {
namespace {

using test::destinationsOf;
using test::sourcesOf;
using unpacking::PortTypeGroup;
using unpacking::SlotMap;

/// The lines of a device without a record that has these slots.
Lines slotLines(const SlotMap& slots) {
  Lines lines = deviceLines({{"N", nullptr, &slots, 1}});
  EXPECT_EQ(lines.front(), "N  no device record  1 port");
  lines.erase(lines.begin());
  return lines;
}

PortTypeGroup audio(unpacking::Range ports) { return sourcesOf("in[{}]", ports, {{"a", {1, 2}}}); }

TEST(DeviceLines, AlignDevicesAndSlots) {
  const DeviceLabel desk = {"N1", "Desk", "N1"};
  const DeviceLabel stage = {"N2", "Stage left", "SN-2"};
  const SlotMap deskSlots = {{"dsp",
                              {sourcesOf("in[{}]", {1, 8}, {{"audio", {1, 2}}, {"video", {1, 1}}}),
                               destinationsOf("mixer-in[{}]", {3, 3}, {{"audio", {1, 16}}})}}};
  const SlotMap stageSlots = {{"x", {{"x[{}]", 1, 2, {{"a", {0, 0}}}, Direction::kUnknown}}}};
  EXPECT_EQ(
      deviceLines({{"N1", &desk, &deskSlots, 40},
                   {"N2", &stage, &stageSlots, 2},
                   {"N3", nullptr, nullptr, 0}}),
      (Lines{"Desk        N1                40 ports",
             "    dsp  in[1..8]     source       audio ch1..2, video ch1",
             "         mixer-in[3]  destination  audio ch1..16",
             "Stage left  SN-2               2 ports", "    x    x[1..2]      neither      a ch0",
             "N3          no device record   0 ports"}));
}

TEST(DeviceLines, AreNoneWithoutADevice) { EXPECT_EQ(deviceLines({}), Lines{}); }

TEST(DeviceLines, FoldSlotsOfTheSamePorts) {
  EXPECT_EQ(slotLines({{"slot1", {audio({1, 2})}},
                       {"slot10", {audio({1, 2})}},
                       {"slot2", {audio({1, 2})}},
                       {"slot3", {audio({1, 3})}},
                       {"slot9", {audio({1, 2})}}}),
            (Lines{"    slot1..2   in[1..2]  source  a ch1..2",
                   "    slot3      in[1..3]  source  a ch1..2",
                   "    slot9..10  in[1..2]  source  a ch1..2"}));
}

TEST(DeviceLines, FoldNoSlotsThatDifferInAnything) {
  const PortTypeGroup group = sourcesOf("in[{}]", {1, 2}, {{"a", {1, 2}}});
  PortTypeGroup pattern = group;
  pattern.port = "out[{}]";
  PortTypeGroup direction = group;
  direction.direction = Direction::kDestination;
  PortTypeGroup first = group;
  first.first = 0;
  PortTypeGroup type = group;
  type.types = {{"b", {1, 2}}};
  PortTypeGroup channels = group;
  channels.types = {{"a", {1, 3}}};
  PortTypeGroup more = group;
  more.types = {{"a", {1, 2}}, {"b", {1, 2}}};
  EXPECT_EQ(
      slotLines({{"s0", {group}},
                 {"s1", {pattern}},
                 {"s2", {direction}},
                 {"s3", {first}},
                 {"s4", {type}},
                 {"s5", {channels}},
                 {"s6", {more}},
                 {"s7", {group, group}},
                 {"t8", {group, group}}}),
      (Lines{"    s0  in[1..2]   source       a ch1..2", "    s1  out[1..2]  source       a ch1..2",
             "    s2  in[1..2]   destination  a ch1..2", "    s3  in[0..2]   source       a ch1..2",
             "    s4  in[1..2]   source       b ch1..2", "    s5  in[1..2]   source       a ch1..3",
             "    s6  in[1..2]   source       a ch1..2, b ch1..2",
             "    s7  in[1..2]   source       a ch1..2", "        in[1..2]   source       a ch1..2",
             "    t8  in[1..2]   source       a ch1..2",
             "        in[1..2]   source       a ch1..2"}));
}

TEST(DeviceLines, FoldNoSlotsWithoutAPlainNumber) {
  EXPECT_EQ(
      slotLines({{"", {audio({1, 1})}},
                 {"4294967295", {audio({1, 1})}},
                 {"a", {audio({1, 1})}},
                 {"a01", {audio({1, 1})}},
                 {"a02", {audio({1, 1})}},
                 {"a0", {audio({1, 1})}}}),
      (Lines{"                in[1]  source  a ch1..2", "    4294967295  in[1]  source  a ch1..2",
             "    a           in[1]  source  a ch1..2", "    a0          in[1]  source  a ch1..2",
             "    a01         in[1]  source  a ch1..2",
             "    a02         in[1]  source  a ch1..2"}));
}

TEST(DeviceLines, ShowRangesAsTheyAre) {
  EXPECT_EQ(
      slotLines({{"s",
                  {sourcesOf("black", {7, 7}, {{"a", {-1, 1}}}),
                   sourcesOf("black", {1, 2}, {{"a", {1, 1}}}), sourcesOf("in[{}]", {8, 1}, {}),
                   sourcesOf("in[{}]{}", {1, 2147483647}, {{"a", {2, 1}}})}},
                 {"t", {}}}),
      (Lines{"    s  black                source  a ch-1..1",
             "       black 1..2           source  a ch1",
             "       in[8..1]             source  no type",
             "       in[1..2147483647]{}  source  a ch2..1", "    t  no ports"}));
}

TEST(DeviceLines, WrapManyTypes) {
  EXPECT_EQ(slotLines({{"s",
                        {sourcesOf("in[{}]", {1, 2},
                                   {{"audio", {1, 16}},
                                    {"metadata", {1, 1}},
                                    {"timecode", {1, 1}},
                                    {"video", {1, 1}}})}}}),
            (Lines{"    s  in[1..2]  source  audio ch1..16, metadata ch1, timecode ch1,",
                   "                         video ch1"}));
}

TEST(DeviceLines, SpellControlCharacters) {
  const DeviceLabel device = {"N1", "a\x1B", "b\n"};
  const SlotMap slots = {{"s\t", {sourcesOf("in\r[{}]\x7F", {1, 2}, {{"t\x01", {1, 1}}})}}};
  EXPECT_EQ(deviceLines({{"N1", &device, &slots, 2}, {"\x02", nullptr, nullptr, 0}}),
            (Lines{"a\\x1B  b\\x0A             2 ports",
                   "    s\\x09  in\\x0D[1..2]\\x7F  source  t\\x01 ch1",
                   "\\x02   no device record  0 ports"}));
}

}  // namespace
}  // namespace quenfold::database
