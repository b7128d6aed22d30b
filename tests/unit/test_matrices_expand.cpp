#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

#include "matrices/expand.h"
#include "support/scratch.h"

namespace quenfold::unpacking {
namespace {

constexpr std::int32_t kLargest = 2147483647;

/// A tree of device D, slot S and one group.
PortTree treeOf(PortTypeGroup group) { return {{"D", {{"S", {std::move(group)}}}}}; }

PortTypeGroup groupOf(Range ports, Range channels) {
  return {"in[{}]", ports.first, ports.last, {{"t", channels}}, Direction::kSource};
}

using Names = std::vector<std::string>;
using Labels = std::vector<std::string_view>;

PortLabelMap labelsOf(
    std::initializer_list<std::pair<std::string_view, std::string_view>> literals) {
  PortLabelMap labels;
  for (const auto& [key, label] : literals) {
    labels.assign(key, label);
  }
  return labels;
}

/// An expanded tree together with all that it refers to.
struct Expansion {
  explicit Expansion(PortTree ports, std::vector<DeviceLabel> deviceLabels = {},
                     PortLabelMap portLabels = {})
      : tree(std::move(ports)),
        devices(std::move(deviceLabels)),
        labels(std::move(portLabels)),
        expanded(expandPortTree(tree, devices, labels)) {}

  /// The names of all ports in creation order, as the listed blocks give them.
  [[nodiscard]] Names names() const {
    Names names;
    PortPrinter name(expanded.longestName);
    for (const auto& [device, ports, firstPort] : expanded.blocks) {
      EXPECT_EQ(firstPort, names.size());
      name.startBlock(device.label, ports);
      for (std::int64_t port = ports.group->first; port <= ports.group->last; ++port) {
        name.startPort(static_cast<std::int32_t>(port));
        for (std::int64_t ch = ports.channels.first; ch <= ports.channels.last; ++ch) {
          names.emplace_back(name.onChannel(static_cast<std::int32_t>(ch)));
        }
      }
    }
    EXPECT_EQ(expanded.ports, names.size());
    return names;
  }

  PortTree tree;
  std::vector<DeviceLabel> devices;
  PortLabelMap labels;
  ExpandedTree expanded;
};

TEST(ExpandPortTree, NamesPortsByTheFirstRecordOfTheirDevice) {
  const Expansion expansion(treeOf(groupOf({2, 2}, {1, 2})),
                            {{"D", "Desk", "N1"}, {"D", "Late", "N2"}},
                            labelsOf({{"D.S.in[2].t.ch2", "Vox"}, {"Desk.S.in[2].t.ch1", "No"}}));
  const ExpandedTree& expanded = expansion.expanded;
  EXPECT_EQ(expansion.names(), (Names{"Desk.S.in[2].t.ch1", "Desk.S.in[2].t.ch2"}));
  ASSERT_EQ(expanded.blocks.size(), 1U);
  EXPECT_EQ(expanded.blocks[0].device.serial, "N1");
  EXPECT_EQ(expanded.labels, (Labels{"", "Vox"}));
  EXPECT_EQ(expanded.labelOf(1), "Vox");
  ASSERT_EQ(expanded.matrices.size(), 1U);
  EXPECT_EQ(expanded.matrices.begin()->first, "Desk.t");
  EXPECT_EQ(expanded.matrices.begin()->second.serialnumber, "N1");
}

TEST(ExpandPortTree, LooksUpADeviceWithoutRecordByTheSuffixAlone) {
  const Expansion expansion(treeOf(groupOf({1, 1}, {1, 1})), {},
                            labelsOf({{".S.in[1].t.ch1", "Vox"}, {"D.S.in[1].t.ch1", "Not this"}}));
  EXPECT_EQ(expansion.names(), (Names{"D.S.in[1].t.ch1"}));
  EXPECT_EQ(expansion.expanded.blocks.at(0).device.serial, "");
  EXPECT_EQ(expansion.expanded.labels, (Labels{"Vox"}));
  EXPECT_EQ(expansion.expanded.matrices.at("D.t").serialnumber, "");
}

TEST(ExpandPortTree, HasNoLabelsWithoutAnyInTheFile) {
  const Expansion expansion(treeOf(groupOf({1, 2}, {1, 2})));
  EXPECT_EQ(expansion.expanded.ports, 4U);
  EXPECT_TRUE(expansion.expanded.labels.empty());
  EXPECT_EQ(expansion.expanded.labelOf(3), "");
}

TEST(ExpandPortTree, KnowsTheLongestName) {
  const auto longest = [](std::vector<DeviceLabel> devices) {
    return Expansion(treeOf(groupOf({9, 10}, {-1, 5})), std::move(devices)).expanded.longestName;
  };
  // A field is taken to be one byte longer than its number.
  const std::size_t suffix = std::string_view(".S.in[10].t.ch-1").size() + 1;
  EXPECT_EQ(longest({}), 1 + suffix);
  EXPECT_EQ(longest({{"D", "label", "L"}}), 5 + suffix);
  EXPECT_EQ(longest({{"D", "L", "serial"}}), 6 + suffix);
  EXPECT_EQ(longest({{"D", "", ""}}), 1 + suffix);
}

TEST(ExpandPortTree, RunsPortsOutsideAndChannelsInside) {
  PortTypeGroup group = groupOf({1, 2}, {3, 4});
  group.types["a"] = {9, 9};
  EXPECT_EQ(Expansion(treeOf(group)).names(),
            (Names{"D.S.in[1].a.ch9", "D.S.in[2].a.ch9", "D.S.in[1].t.ch3", "D.S.in[1].t.ch4",
                   "D.S.in[2].t.ch3", "D.S.in[2].t.ch4"}));
}

TEST(ExpandPortTree, CountsTheListsByDirection) {
  PortTypeGroup in = groupOf({1, 1}, {1, 2});
  PortTypeGroup out = groupOf({2, 4}, {1, 1});
  out.direction = Direction::kDestination;
  PortTypeGroup other = groupOf({5, 5}, {1, 1});
  other.direction = Direction::kUnknown;
  const Expansion expansion({{"D", {{"S", {out, other, in}}}}});
  EXPECT_EQ(expansion.expanded.inputs, 2U);
  EXPECT_EQ(expansion.expanded.outputs, 3U);
  EXPECT_EQ(expansion.expanded.ports, 6U);
  const ExpandedTree& expanded = expansion.expanded;
  EXPECT_EQ(expanded.matrices.at("D.t").blocks,
            (std::vector<const ExpandedBlock*>{&expanded.blocks[0], &expanded.blocks[1],
                                               &expanded.blocks[2]}));
}

TEST(ExpandPortTree, SharesAMatrixOfTheSameLabelAndType) {
  const PortTypeGroup group = groupOf({1, 1}, {1, 1});
  const Expansion expansion({{"B", {{"S", {group}}}}, {"A", {{"S", {group}}}}},
                            {{"B", "Desk", "serial B"}, {"A", "Desk", "serial A"}});
  ASSERT_EQ(expansion.expanded.matrices.size(), 1U);
  EXPECT_EQ(expansion.expanded.matrices.at("Desk.t").serialnumber, "serial A");
  EXPECT_EQ(expansion.expanded.matrices.at("Desk.t").blocks.size(), 2U);
}

TEST(ExpandPortTree, KeepsAMatrixWithoutPortsForAReversedRange) {
  for (const PortTypeGroup& group : {groupOf({2, 1}, {1, 9}), groupOf({1, 9}, {2, 1})}) {
    const Expansion expansion(treeOf(group));
    EXPECT_EQ(expansion.expanded.ports, 0U);
    EXPECT_TRUE(expansion.expanded.blocks.empty());
    ASSERT_EQ(expansion.expanded.matrices.size(), 1U);
    EXPECT_TRUE(expansion.expanded.matrices.at("D.t").blocks.empty());
  }
}

TEST(ExpandPortTree, EndsAtTheLargestNumber) {
  EXPECT_EQ(Expansion(treeOf(groupOf({kLargest - 1, kLargest}, {kLargest, kLargest}))).names(),
            (Names{"D.S.in[2147483646].t.ch2147483647", "D.S.in[2147483647].t.ch2147483647"}));
  EXPECT_EQ(
      Expansion(treeOf(groupOf({-kLargest - 1, -kLargest - 1}, {-kLargest - 1, -kLargest - 1})))
          .names(),
      (Names{"D.S.in[-2147483648].t.ch-2147483648"}));
}

TEST(ExpandPortTree, EndsLabelsAtTheLargestNumber) {
  const Expansion expansion(treeOf(groupOf({kLargest, kLargest}, {kLargest - 1, kLargest})), {},
                            labelsOf({{".S.in[2147483647].t.ch2147483647", "Vox"}}));
  EXPECT_EQ(expansion.expanded.labels, (Labels{"", "Vox"}));
}

TEST(ExpandPortTree, RefusesMorePortsThanTheLimit) {
  const std::string message = "too many ports: more than 67108864";
  const Range all = {-kLargest - 1, kLargest};
  EXPECT_EQ(test::messageOf([&] { expandPortTree(treeOf(groupOf(all, all)), {}, {}); }), message);
  EXPECT_EQ(test::messageOf([&] {
              expandPortTree(treeOf(groupOf({1, 67108865}, {1, 1})), {}, {});
            }),
            message);
  PortTypeGroup group = groupOf({1, 1}, {1, 67108864});
  group.types["u"] = {1, 1};
  EXPECT_EQ(test::messageOf([&] { expandPortTree(treeOf(group), {}, {}); }), message);
}

TEST(ExpandPortTree, RefusesNamesThatMultiplyBeyondTheLimit) {
  const std::string message = "too many bytes of port names: more than 8589934592";
  const std::string longText(1000000, 'x');
  const PortTree tree = treeOf(groupOf({1, 10000}, {1, 1}));
  for (const DeviceLabel& device :
       {DeviceLabel{"D", longText, "S"}, DeviceLabel{"D", "L", longText}}) {
    EXPECT_EQ(test::messageOf([&] { expandPortTree(tree, {device}, {}); }), message);
  }
  PortTypeGroup group = groupOf({1, 10000}, {1, 1});
  group.port = longText;
  EXPECT_EQ(test::messageOf([&] { expandPortTree(treeOf(group), {}, {}); }), message);
}

// Behind its device a port D.S.in[8190].t.ch1 has 18 bytes: 1 of the slot, 9 of the port (a place
// is taken to be one longer than its number), 1 of the type, 1 digit of the channel and 6 marks. It
// is counted three times, under the label, the serial and the ID of its device: a mebibyte here.
// After 8190 ports two of the 8192 are left for the names of both matrices, each with its serial.
TEST(ExpandPortTree, CountsTheBytesOfNamesExactly) {
  constexpr std::size_t kMebi = 1048576;
  constexpr std::size_t kLabelAndSerial = kMebi - 1 - 3UL * 18;
  const std::vector<DeviceLabel> devices = {{"D", std::string(kLabelAndSerial - 3, 'l'), "ser"}};
  const auto portsWith = [&](std::size_t otherType, const PortLabelMap& labels) {
    PortTypeGroup group = groupOf({1, 8190}, {1, 1});
    group.types[std::string(otherType, 'u')] = {2, 1};
    return expandPortTree(treeOf(group), devices, labels).ports;
  };
  constexpr std::size_t kRoom = 2 * kMebi - (kLabelAndSerial + 1) - kLabelAndSerial;
  const std::string message = "too many bytes of port names: more than 8589934592";
  EXPECT_EQ(portsWith(kRoom, {}), 8190U);
  EXPECT_EQ(test::messageOf([&] { portsWith(kRoom + 1, {}); }), message);
  const PortLabelMap labels = labelsOf({{"D.S.in[5].t.ch1", "Vox"}});
  EXPECT_EQ(portsWith(kRoom - 3, labels), 8190U);
  EXPECT_EQ(test::messageOf([&] { portsWith(kRoom - 2, labels); }), message);
}

TEST(ExpandPortTree, TakesTheRoomOfItsListsAtOnce) {
  PortTypeGroup group = groupOf({1, 3}, {1, 2});
  group.types["u"] = {1, 3};
  const ExpandedTree without = expandPortTree(treeOf(group), {}, {});
  EXPECT_EQ(without.blocks.capacity(), 2U);
  EXPECT_EQ(without.labels.capacity(), 0U);
  const PortLabelMap labels = labelsOf({{"x", "y"}});
  const ExpandedTree with = expandPortTree(treeOf(group), {}, labels);
  EXPECT_EQ(with.labels.size(), 15U);
  EXPECT_EQ(with.labels.capacity(), 15U);
}

TEST(ExpandPortTree, HasNoNameWithoutPorts) {
  EXPECT_EQ(expandPortTree({}, {}, {}).longestName, 0U);
  EXPECT_EQ(expandPortTree(treeOf(groupOf({2, 1}, {1, 1})), {}, {}).longestName, 0U);
}

TEST(ExpandPortTree, CountsALabelForEveryPortThatBearsIt) {
  PortTypeGroup group = groupOf({1, 10000}, {1, 1});
  group.port = "same";
  EXPECT_EQ(test::messageOf([&] {
              PortLabelMap labels;
              labels.assign(".S.same.t.ch1", labels.keep(std::string(1000000, 'x')));
              expandPortTree(treeOf(group), {}, labels);
            }),
            "too many bytes of port names: more than 8589934592");
}

TEST(ExpandPortTree, CountsTheNamesOfMatricesWithoutPorts) {
  PortTypeGroup group;
  for (int type = 0; type < 10000; ++type) {
    group.types[std::to_string(type)] = {2, 1};
  }
  EXPECT_EQ(test::messageOf([&] {
              expandPortTree(treeOf(group), {{"D", std::string(1000000, 'x'), "S"}}, {});
            }),
            "too many bytes of port names: more than 8589934592");
}

TEST(ExpandPortTree, EndsOnAHugeRangeWithoutPorts) {
  PortTypeGroup group = groupOf({-kLargest - 1, kLargest}, {2, 1});
  EXPECT_EQ(expandPortTree(treeOf(group), {}, {}).ports, 0U);
}

TEST(ExpandPortTree, TakesAWidePatternForAnErrorOnlyWhereAPortIsWritten) {
  PortTypeGroup group = groupOf({1, 1}, {2, 1});
  group.port = "in[{:99999}]";
  EXPECT_EQ(expandPortTree(treeOf(group), {}, {}).ports, 0U);
  group.types["t"] = {1, 1};
  EXPECT_EQ(test::messageOf([&] { expandPortTree(treeOf(group), {}, {}); }),
            "port pattern too wide: more than 4096");
}

TEST(ExpandPortTree, TakesABadPatternForAnErrorOnlyWhereAPortIsWritten) {
  PortTypeGroup group = groupOf({1, 1}, {1, 1});
  group.port = "x{[{}]";
  EXPECT_NE(test::messageOf([&] { expandPortTree(treeOf(group), {}, {}); }), "");
  EXPECT_NE(test::messageOf([&] {
              expandPortTree(treeOf(group), {}, labelsOf({{"x", "y"}}));
            }),
            "")
      << "with labels";
  group.types["t"] = {2, 1};
  EXPECT_EQ(expandPortTree(treeOf(group), {}, {}).ports, 0U);
  group.types["t"] = {1, 1};
  group.last = 0;
  EXPECT_EQ(expandPortTree(treeOf(group), {}, {}).ports, 0U);
}

TEST(ExpandPortTree, TakesOtherBracesAsText) {
  PortTypeGroup group = groupOf({7, 8}, {1, 1});
  group.port = "plain";
  EXPECT_EQ(Expansion({{"{}", {{"{0}", {group}}}}}).names(),
            (Names{"{}.{0}.plain.t.ch1", "{}.{0}.plain.t.ch1"}));
}

}  // namespace
}  // namespace quenfold::unpacking
