#include <gtest/gtest.h>

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

std::vector<std::string> namesOf(const ExpandedTree& expanded) {
  std::vector<std::string> names;
  for (const UnpackedPort& port : expanded.allPorts) {
    names.push_back(port.name);
  }
  return names;
}

using Names = std::vector<std::string>;

TEST(ExpandPortTree, NamesPortsByLabelAndSerial) {
  const PortLabelMap labels = {{"D.S.in[2].t.ch1", "Vox"}};
  const ExpandedTree expanded = expandPortTree(treeOf(groupOf({2, 2}, {1, 2})),
                                               {{"D", "Desk", "N1"}, {"D", "Late", "N2"}}, labels);
  ASSERT_EQ(expanded.allPorts.size(), 2U);
  EXPECT_EQ(expanded.allPorts[0].name, "Desk.S.in[2].t.ch1");
  EXPECT_EQ(expanded.allPorts[0].serialName, "N1.S.in[2].t.ch1");
  EXPECT_EQ(expanded.allPorts[0].label, "Vox");
  EXPECT_EQ(expanded.allPorts[0].shownName(), "Vox");
  EXPECT_EQ(expanded.allPorts[1].label, "");
  EXPECT_EQ(expanded.allPorts[1].shownName(), "Desk.S.in[2].t.ch2");
  ASSERT_EQ(expanded.matrices.size(), 1U);
  EXPECT_EQ(expanded.matrices.begin()->first, "Desk.t");
  EXPECT_EQ(expanded.matrices.begin()->second.serialnumber, "N1");
}

TEST(ExpandPortTree, LooksUpADeviceWithoutRecordByTheSuffixAlone) {
  const PortLabelMap labels = {{".S.in[1].t.ch1", "Vox"}, {"D.S.in[1].t.ch1", "Not this"}};
  const ExpandedTree expanded = expandPortTree(treeOf(groupOf({1, 1}, {1, 1})), {}, labels);
  ASSERT_EQ(expanded.allPorts.size(), 1U);
  EXPECT_EQ(expanded.allPorts[0].name, "D.S.in[1].t.ch1");
  EXPECT_EQ(expanded.allPorts[0].serialName, ".S.in[1].t.ch1");
  EXPECT_EQ(expanded.allPorts[0].label, "Vox");
  EXPECT_EQ(expanded.matrices.at("D.t").serialnumber, "");
}

TEST(ExpandPortTree, RunsPortsOutsideAndChannelsInside) {
  PortTypeGroup group = groupOf({1, 2}, {3, 4});
  group.types["a"] = {9, 9};
  EXPECT_EQ(namesOf(expandPortTree(treeOf(group), {}, {})),
            (Names{"D.S.in[1].a.ch9", "D.S.in[2].a.ch9", "D.S.in[1].t.ch3", "D.S.in[1].t.ch4",
                   "D.S.in[2].t.ch3", "D.S.in[2].t.ch4"}));
}

TEST(ExpandPortTree, FillsTheListsByDirection) {
  PortTypeGroup in = groupOf({1, 1}, {1, 1});
  PortTypeGroup out = groupOf({2, 2}, {1, 1});
  out.direction = Direction::kDestination;
  PortTypeGroup other = groupOf({3, 3}, {1, 1});
  other.direction = Direction::kUnknown;
  const ExpandedTree expanded = expandPortTree({{"D", {{"S", {out, other, in}}}}}, {}, {});
  ASSERT_EQ(expanded.inputs.size(), 1U);
  EXPECT_EQ(expanded.inputs[0], &expanded.allPorts[2]);
  ASSERT_EQ(expanded.outputs.size(), 1U);
  EXPECT_EQ(expanded.outputs[0], &expanded.allPorts[0]);
  EXPECT_EQ(expanded.allPorts.size(), 3U);
  EXPECT_EQ(expanded.matrices.at("D.t").ports.size(), 3U);
}

TEST(ExpandPortTree, SharesAMatrixOfTheSameLabelAndType) {
  const PortTypeGroup group = groupOf({1, 1}, {1, 1});
  const PortTree tree = {{"B", {{"S", {group}}}}, {"A", {{"S", {group}}}}};
  const ExpandedTree expanded =
      expandPortTree(tree, {{"B", "Desk", "serial B"}, {"A", "Desk", "serial A"}}, {});
  ASSERT_EQ(expanded.matrices.size(), 1U);
  EXPECT_EQ(expanded.matrices.at("Desk.t").serialnumber, "serial A");
  EXPECT_EQ(expanded.matrices.at("Desk.t").ports.size(), 2U);
}

TEST(ExpandPortTree, KeepsAMatrixWithoutPortsForAReversedRange) {
  for (const PortTypeGroup& group : {groupOf({2, 1}, {1, 9}), groupOf({1, 9}, {2, 1})}) {
    const ExpandedTree expanded = expandPortTree(treeOf(group), {}, {});
    EXPECT_TRUE(expanded.allPorts.empty());
    ASSERT_EQ(expanded.matrices.size(), 1U);
    EXPECT_TRUE(expanded.matrices.at("D.t").ports.empty());
  }
}

TEST(ExpandPortTree, EndsAtTheLargestNumber) {
  EXPECT_EQ(namesOf(expandPortTree(treeOf(groupOf({kLargest - 1, kLargest}, {kLargest, kLargest})),
                                   {}, {})),
            (Names{"D.S.in[2147483646].t.ch2147483647", "D.S.in[2147483647].t.ch2147483647"}));
  EXPECT_EQ(
      namesOf(expandPortTree(
          treeOf(groupOf({-kLargest - 1, -kLargest - 1}, {-kLargest - 1, -kLargest - 1})), {}, {})),
      (Names{"D.S.in[-2147483648].t.ch-2147483648"}));
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

TEST(ExpandPortTree, CountsALabelForEveryPortThatBearsIt) {
  PortTypeGroup group = groupOf({1, 10000}, {1, 1});
  group.port = "same";
  EXPECT_EQ(test::messageOf([&] {
              expandPortTree(treeOf(group), {}, {{".S.same.t.ch1", std::string(1000000, 'x')}});
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
  EXPECT_TRUE(expandPortTree(treeOf(group), {}, {}).allPorts.empty());
}

TEST(ExpandPortTree, TakesABadPatternForAnErrorOnlyWhereAPortIsWritten) {
  PortTypeGroup group = groupOf({1, 1}, {1, 1});
  group.port = "x{[{}]";
  EXPECT_NE(test::messageOf([&] { expandPortTree(treeOf(group), {}, {}); }), "");
  group.types["t"] = {2, 1};
  EXPECT_TRUE(expandPortTree(treeOf(group), {}, {}).allPorts.empty());
  group.types["t"] = {1, 1};
  group.last = 0;
  EXPECT_TRUE(expandPortTree(treeOf(group), {}, {}).allPorts.empty());
}

TEST(ExpandPortTree, TakesOtherBracesAsText) {
  PortTypeGroup group = groupOf({7, 8}, {1, 1});
  group.port = "plain";
  const PortTree tree = {{"{}", {{"{0}", {group}}}}};
  EXPECT_EQ(namesOf(expandPortTree(tree, {}, {})),
            (Names{"{}.{0}.plain.t.ch1", "{}.{0}.plain.t.ch1"}));
}

}  // namespace
}  // namespace quenfold::unpacking
