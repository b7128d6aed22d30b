#include <fmt/format.h>
#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <utility>

#include "matrices/pack_tree.h"
#include "support/colliding_keys.h"
#include "support/scratch.h"

namespace quenfold::packing {
namespace {

/// Inserts a port that has to be searched.
void addLonePort(DeviceList& devices, std::string_view port) {
  PortCursor cursor;
  addPort(devices, cursor, port);
}

/// The tree keeps views into its port strings.
class PortTexts {
 public:
  template <typename... Arguments>
  std::string_view keep(fmt::format_string<Arguments...> pattern, Arguments&&... arguments) {
    return texts_.emplace_back(fmt::format(pattern, std::forward<Arguments>(arguments)...));
  }

 private:
  std::deque<std::string> texts_;
};

DeviceList treeOf(std::initializer_list<std::string_view> ports) {
  DeviceList devices;
  for (const std::string_view port : ports) {
    addLonePort(devices, port);
  }
  return devices;
}

/// The only slot of a tree, consolidated, as one text: "in[] 1-8 s audio:1,2; ...".
std::string groupsOf(std::initializer_list<std::string_view> ports) {
  DeviceList devices = treeOf(ports);
  PackSlot& slot = *devices.begin()->slots.begin();
  consolidate(slot);
  std::string text;
  for (const PortTypeGroup& group : slot.groups) {
    text += fmt::format("{} {}-{} {}", group.port, group.first, group.last,
                        directionText(group.direction));
    for (const TypeChannels& type : *group.types) {
      text += fmt::format(" {}:", type.type);
      for (const std::int32_t channel : type.channels) {
        text += fmt::format("{},", channel);
      }
    }
    text += ";";
  }
  return text;
}

TEST(AddPort, AppendsWhatIsNewInInputOrder) {
  const DeviceList devices =
      treeOf({"B.2.in[2].video.ch1", "A.1.in[1].audio.ch2", "B.1.in[1].audio.ch1",
              "B.2.in[2].audio.ch9", "B.2.in[2].audio.ch3", "B.2.out[2].audio.ch3"});
  ASSERT_EQ(devices.size(), 2U);
  EXPECT_EQ(devices[0].name, "B");
  EXPECT_EQ(devices[1].name, "A");
  ASSERT_EQ(devices[0].slots.size(), 2U);
  EXPECT_EQ(devices[0].slots[0].name, "2");
  EXPECT_EQ(devices[0].slots[1].name, "1");
  const PackSlot& slot = devices[0].slots[0];
  ASSERT_EQ(slot.ports.size(), 2U);
  EXPECT_EQ(slot.ports[0].port, (PortString{"in[]", 2}));
  EXPECT_EQ(slot.ports[1].port, (PortString{"out[]", 2}));
  ASSERT_EQ(slot.ports[0].types.size(), 2U);
  EXPECT_EQ(slot.ports[0].types[0].type, "video");
  EXPECT_EQ(slot.ports[0].types[1].type, "audio");
  ASSERT_EQ(slot.ports[0].types[1].channels.size(), 2U);
  EXPECT_EQ(slot.ports[0].types[1].channels[0], 9);
  EXPECT_EQ(slot.ports[0].types[1].channels[1], 3);
}

TEST(AddPort, GivesTheListWithThePortsChannel) {
  DeviceList devices;
  const std::string_view text = "d.s.in[1].a.ch4";
  const ChannelList& channels = addPort(devices, splitPort(text));
  EXPECT_EQ(&channels, &devices[0].slots[0].ports[0].types[0].channels);
  ASSERT_EQ(channels.size(), 1U);
  EXPECT_EQ(channels[0], 4);
  EXPECT_EQ(&addPort(devices, splitPort("d.s.in[1].a.ch5")), &channels);
  EXPECT_EQ(channels.size(), 2U);
}

TEST(AddPort, KeepsDeviceAndSlotOfABadPort) {
  DeviceList devices;
  EXPECT_EQ(test::messageOf([&] { addLonePort(devices, "D.S.in.t.ch1"); }),
            "PortString '[' not found");
  ASSERT_EQ(devices.size(), 1U);
  ASSERT_EQ(devices[0].slots.size(), 1U);
  EXPECT_EQ(devices[0].slots[0].name, "S");
  EXPECT_TRUE(devices[0].slots[0].ports.empty());
}

/// The tree of ports inserted by one cursor as one text: "device/slot/pattern
/// number/type:channels".
std::string cursorTreeOf(std::initializer_list<std::string_view> ports) {
  DeviceList devices;
  PortCursor cursor;
  for (const std::string_view port : ports) {
    addPort(devices, cursor, port);
  }
  std::string text;
  for (const PackDevice& device : devices) {
    for (const PackSlot& slot : device.slots) {
      for (const PackPort& port : slot.ports) {
        for (const TypeChannels& type : port.types) {
          text += fmt::format("{}/{}/{}{}/{}:", device.name, slot.name, port.port.name,
                              port.port.id, type.type);
          for (const std::int32_t channel : type.channels) {
            text += fmt::format("{},", channel);
          }
          text += ' ';
        }
      }
    }
  }
  return text;
}

TEST(PortCursor, GoesOnWhereTheLastPortWent) {
  EXPECT_EQ(cursorTreeOf({"d.s.in[1].a.ch1", "d.s.in[1].a.ch2", "d.s.in[1].a.ch12"}),
            "d/s/in[]1/a:1,2,12, ");
}

TEST(PortCursor, LeavesWhatDiffersInAnyPart) {
  EXPECT_EQ(cursorTreeOf({"d.s.in[1].a.ch1", "d.s.in[1].b.ch1", "d.s.in[1].a.ch2",
                          "d.s.in[2].a.ch1", "d.t.in[2].a.ch1", "e.t.in[2].a.ch1",
                          "d.t.in[2].a.ch2", "d.s.in[02].a.ch2", "d.s.in[1].a.ch3"}),
            "d/s/in[]1/a:1,2,3, d/s/in[]1/b:1, d/s/in[]2/a:1,2, d/t/in[]2/a:1,2, e/t/in[]2/a:1, ");
}

TEST(PortCursor, ComparesPortStringsFromTheirStart) {
  EXPECT_EQ(cursorTreeOf({"d.s.in[1].a.ch1", "xd.s.in[1].a.ch1", "xxd.s.in[1].a.ch1"}),
            "d/s/in[]1/a:1, xd/s/in[]1/a:1, xxd/s/in[]1/a:1, ");
}

TEST(PortCursor, HasTheMessagesOfASplit) {
  DeviceList devices;
  PortCursor cursor;
  const auto message = [&](std::string_view port) {
    return test::messageOf([&] { addPort(devices, cursor, port); });
  };
  addPort(devices, cursor, "d.s.in[1].a.ch1");
  EXPECT_EQ(message("d.s.in[1].a.x1"), "Bad ch string");
  EXPECT_EQ(message("d.s.in[1].a."), "Bad ch string");
  EXPECT_EQ(message("d.s.in[1].a.chx"), "PortString number error");
  EXPECT_EQ(message("d.s.in.a.ch1"), "PortString '[' not found");
  addPort(devices, cursor, "d.s.in[1].a.ch2");
  EXPECT_EQ(test::standardErrorOf([&] { addPort(devices, cursor, "d.s.in[1].a.ch2"); }),
            "Duplicate channel in 2(d.s.in[1].a.2). Channels=1,2,");
}

TEST(PortCursor, CutsPortStringsThatShareTheirSlot) {
  EXPECT_EQ(cursorTreeOf({"d.s.in[1].a.ch1", "d.s.out[1]..ch1", "d.s1.in[1].a.ch1",
                          "d.s.in[1].a.ch2", ".s.in[1].a.ch1", "..in[1].a.ch1", "..in[2].a.ch1"}),
            "d/s/in[]1/a:1,2, d/s/out[]1/:1, d/s1/in[]1/a:1, /s/in[]1/a:1, //in[]1/a:1, "
            "//in[]2/a:1, ");
  for (const char* port : {"d.s.", "d.s.in[1]", "d.s.in[1].", "d.s.in[1].b", "d.s.in[1].b.",
                           "d.s.in[1].b.c.ch1", "d.s"}) {
    EXPECT_EQ(test::messageOf([&] {
                cursorTreeOf({"d.s.in[1].a.ch1", port});
              }),
              "Bad ch string")
        << port;
  }
}

TEST(AddChannel, ReportsADuplicateAndKeepsOne) {
  DeviceList devices = treeOf({"F1.s1.in[3].audio.ch1", "F1.s1.in[3].audio.ch2"});
  const std::string warning =
      test::standardErrorOf([&] { addLonePort(devices, "F1.s1.in[3].audio.ch2"); });
  EXPECT_EQ(warning, "Duplicate channel in 2(F1.s1.in[3].audio.2). Channels=1,2,");
  EXPECT_EQ(devices[0].slots[0].ports[0].types[0].channels.size(), 2U);
}

TEST(AddChannel, NamesThePortPartAsItWasWritten) {
  DeviceList devices = treeOf({"F.s.in[ 03x].t.ch-1"});
  const std::string warning =
      test::standardErrorOf([&] { addLonePort(devices, "F.s.in[3].t.ch-1zz"); });
  EXPECT_EQ(warning, "Duplicate channel in -1(F.s.in[3].t.-1). Channels=-1,");
}

TEST(Consolidate, MergesEqualLayoutsIntoARange) {
  EXPECT_EQ(groupsOf({"d.s.in[1].a.ch1", "d.s.in[2].a.ch1", "d.s.in[3].a.ch1"}),
            "in[] 1-3 s a:1,;");
}

TEST(Consolidate, GivesADifferentLayoutItsOwnClass) {
  EXPECT_EQ(groupsOf({"d.s.in[1].a.ch1", "d.s.in[2].a.ch1", "d.s.in[2].a.ch2", "d.s.in[3].a.ch1"}),
            "in[] 1-3 s a:1,;in[] 2-2 s a:1,2,;");
}

TEST(Consolidate, ComparesLayoutsPositionByPosition) {
  EXPECT_EQ(groupsOf({"d.s.in[1].a.ch1", "d.s.in[1].b.ch1", "d.s.in[2].b.ch1", "d.s.in[2].a.ch1"}),
            "in[] 1-1 s a:1, b:1,;in[] 2-2 s b:1, a:1,;");
  EXPECT_EQ(groupsOf({"d.s.in[1].a.ch1", "d.s.in[1].a.ch2", "d.s.in[2].a.ch2", "d.s.in[2].a.ch1"}),
            "in[] 1-1 s a:1,2,;in[] 2-2 s a:2,1,;");
  EXPECT_EQ(groupsOf({"d.s.in[1].a.ch1", "d.s.in[2].a.ch1", "d.s.in[2].b.ch1"}),
            "in[] 1-1 s a:1,;in[] 2-2 s a:1, b:1,;");
}

TEST(Consolidate, OrdersByClassThenByPattern) {
  EXPECT_EQ(groupsOf({"d.s.in[1].a.ch1", "d.s.out[1].b.ch1", "d.s.pip[1].a.ch1", "d.s.in[2].b.ch1",
                      "d.s.in[3].a.ch1"}),
            "in[] 1-3 s a:1,;pip[] 1-1 d a:1,;out[] 1-1 d b:1,;in[] 2-2 s b:1,;");
}

/// The layout of one type with these channels.
Layout layoutWith(std::initializer_list<std::int32_t> channels) {
  Layout layout;
  TypeChannels& type = layout.append({"t", {}});
  for (const std::int32_t channel : channels) {
    type.channels.append(channel);
  }
  return layout;
}

TEST(LayoutHash, IsThatOfTypesAndChannelsInTheirOrder) {
  EXPECT_EQ(hashOf(layoutWith({1, 2})), hashOf(layoutWith({1, 2})));
  EXPECT_NE(hashOf(layoutWith({1, 2})), hashOf(layoutWith({2, 1})));
  EXPECT_NE(hashOf(layoutWith({1, 2})), hashOf(layoutWith({1})));
  EXPECT_EQ(hashOf(layoutWith({})), hashOf(layoutWith({})));
}

// A sum of channels times powers of a factor would be the same for all of these.
TEST(LayoutHash, SpreadsLayoutsMadeToCollide) {
  constexpr std::int32_t kLayouts = 2000;
  std::vector<std::uint32_t> hashes;
  hashes.reserve(kLayouts);
  for (std::int32_t i = 0; i < kLayouts; ++i) {
    hashes.push_back(hashOf(layoutWith({i, 31 * (kLayouts - i)})));
  }
  EXPECT_LE(test::largestCrowd(hashes), 16U);
}

// The numbers below need not be contiguous; each list is worked out by the rule of `widen`.
TEST(Consolidate, KeptOnPurposeZeroCountsAsUnset) {
  EXPECT_EQ(groupsOf({"d.s.in[0].a.ch1", "d.s.in[1].a.ch1"}), "in[] 1-1 s a:1,;");
  EXPECT_EQ(groupsOf({"d.s.in[1].a.ch1", "d.s.in[0].a.ch1"}), "in[] 0-1 s a:1,;");
  EXPECT_EQ(groupsOf({"d.s.in[0].a.ch1"}), "in[] 0-0 s a:1,;");
  EXPECT_EQ(groupsOf({"d.s.in[-2].a.ch1", "d.s.in[3].a.ch1"}), "in[] -2-3 s a:1,;");
}

TEST(Consolidate, KeptOnPurposeTheRangeEndsAtTheLastNumberAboveTheSmallest) {
  EXPECT_EQ(groupsOf({"d.s.in[5].a.ch1", "d.s.in[9].a.ch1", "d.s.in[7].a.ch1"}),
            "in[] 5-7 s a:1,;");
  EXPECT_EQ(groupsOf({"d.s.in[3].a.ch1", "d.s.in[2].a.ch1", "d.s.in[1].a.ch1"}),
            "in[] 1-3 s a:1,;");
}

TEST(Consolidate, KeptOnPurposeGapsAreFilled) {
  EXPECT_EQ(groupsOf({"d.s.in[1].a.ch1", "d.s.in[2].a.ch1", "d.s.in[5].a.ch1"}),
            "in[] 1-5 s a:1,;");
}

TEST(Consolidate, ReplacesEarlierGroups) {
  DeviceList devices = treeOf({"d.s.in[1].a.ch1"});
  PackSlot& slot = *devices.begin()->slots.begin();
  consolidate(slot);
  consolidate(slot);
  EXPECT_EQ(slot.groups.size(), 1U);
}

TEST(PackTree, FindsPortsAmongMany) {
  constexpr int kPorts = 50000;
  PortTexts texts;
  DeviceList devices;
  for (int round = 0; round < 2; ++round) {
    for (int id = kPorts; id > 0; --id) {
      addLonePort(devices, texts.keep("d.s.in[{}].a.ch{}", id, round));
      addLonePort(devices, texts.keep("d.s.out[{}].a.ch{}", id, round));
    }
  }
  PackSlot& slot = *devices.begin()->slots.begin();
  EXPECT_EQ(slot.ports.size(), 2U * kPorts);
  consolidate(slot);
  ASSERT_EQ(slot.groups.size(), 2U);
  EXPECT_EQ(slot.groups[0].port, "in[]");
  EXPECT_EQ(slot.groups[0].first, 1);
  EXPECT_EQ(slot.groups[0].last, kPorts);
  EXPECT_EQ(slot.groups[1].port, "out[]");
}

TEST(PackTree, GrowsInEveryList) {
  constexpr int kMany = 20000;
  PortTexts texts;
  DeviceList devices;
  for (int i = 0; i < kMany; ++i) {
    addLonePort(devices, texts.keep("d{}.s.in[1].a.ch1", i));
    addLonePort(devices, texts.keep("d.s{}.in[1].a.ch1", i));
    addLonePort(devices, texts.keep("d.s.p{}[1].a.ch1", i));
    addLonePort(devices, texts.keep("d.t.in[1].a{}.ch1", i));
    addLonePort(devices, texts.keep("d.u.in[1].a.ch{}", i));
    addLonePort(devices, texts.keep("d.v.in[{}].a.ch{}", i % 5000, i));
  }
  EXPECT_EQ(devices.size(), kMany + 1U);
  PackDevice& device = devices.findOrAppend(std::string_view("d"), [] { return PackDevice(); });
  EXPECT_EQ(device.slots.size(), kMany + 4U);
  for (PackSlot& slot : device.slots) {
    consolidate(slot);
  }
  const auto groupsOfSlot = [&](std::string_view name) {
    const PackSlot* const slot = device.slots.find(name);
    return slot == nullptr ? 0 : slot->groups.size();
  };
  EXPECT_EQ(groupsOfSlot("s"), static_cast<std::size_t>(kMany)) << "one layout, many patterns";
  EXPECT_EQ(groupsOfSlot("v"), 5000U) << "many layouts, one pattern";
  EXPECT_EQ(groupsOfSlot("t"), 1U);
  EXPECT_EQ(groupsOfSlot("u"), 1U);
}

}  // namespace
}  // namespace quenfold::packing
