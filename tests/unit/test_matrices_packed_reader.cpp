#include <fmt/format.h>
#include <gtest/gtest.h>

#include "matrices/packed_reader.h"
#include "support/scratch.h"

namespace quenfold::unpacking {
namespace {

PortTree treeOf(std::string json) {
  const JsonDocument document = parseJson(json);
  return loadPortTree(document);
}

/// A tree of one device and one slot with one group.
PortTypeGroup groupOf(std::string_view group) {
  return treeOf(fmt::format(R"({{"D": {{"S": [{}]}}}})", group)).at("D").at("S").at(0);
}

std::string groupMessage(std::string_view group) {
  return test::messageOf([group] { groupOf(group); });
}

std::string rangeMessage(std::string_view range) {
  return groupMessage(fmt::format(R"({{"port": ["in[]", {}, "s"], "types": []}})", range));
}

std::string typeMessage(std::string_view type) {
  return groupMessage(fmt::format(R"({{"port": ["in[]", [1], "s"], "types": [{}]}})", type));
}

TEST(LoadPortTree, ReportsEachFaultAboveTheGroup) {
  const auto message = [](const char* json) { return test::messageOf([json] { treeOf(json); }); };
  EXPECT_EQ(message("[]"), "Loaded Port Tree root is not object");
  EXPECT_EQ(message(R"({"D": []})"), "Loaded Port Tree device is not object");
  EXPECT_EQ(message(R"({"D": {"S": {}}})"), "Loaded Port Tree Slot is not array");
  EXPECT_EQ(message(R"({"D": {"S": [[]]}})"), "Loaded Port Tree PortTypeGroup is not object");
}

TEST(LoadPortTree, ReportsEachFaultOfAPort) {
  EXPECT_EQ(groupMessage("{}"), "PortTypeGroup parse error, port not found");
  EXPECT_EQ(groupMessage(R"({"port": "in[]"})"), "StringRangePair parse error, value is not array");
  EXPECT_EQ(groupMessage(R"({"port": ["in[]", [1]]})"),
            "Port parsing error, port field must have 3 entries");
  EXPECT_EQ(groupMessage(R"({"port": ["in[]", [1], "s", 0]})"),
            "Port parsing error, port field must have 3 entries");
  EXPECT_EQ(groupMessage(R"({"port": [1, 1, 1]})"), "Port error, 1st entry is not string");
  EXPECT_EQ(groupMessage(R"({"port": ["in[]", 1, 1]})"), "Range value is not array");
  EXPECT_EQ(groupMessage(R"({"port": ["in[]", [1], 1]})"), "Port error, 3rd entry is not string");
}

TEST(LoadPortTree, ReportsEachFaultOfTheTypes) {
  EXPECT_EQ(groupMessage(R"({"port": ["in[]", [1], "s"]})"),
            "PortTypeGroup parse error, types not found");
  EXPECT_EQ(groupMessage(R"({"port": ["in[]", [1], "s"], "types": {}})"),
            "PortTypeGroup parse error, types is not array");
  EXPECT_EQ(typeMessage("1"), "StringRangePair parse error, value is not array");
  EXPECT_EQ(typeMessage(R"(["x"])"), "StringRangePair error, port field must have 2 entries");
  EXPECT_EQ(typeMessage(R"(["x", [1], 0])"),
            "StringRangePair error, port field must have 2 entries");
  EXPECT_EQ(typeMessage("[1, 1]"), "StringRangePair error, first entry is not string");
  EXPECT_EQ(typeMessage(R"(["x", 1])"), "Range value is not array");
}

TEST(LoadPortTree, ReportsEachFaultOfARange) {
  EXPECT_EQ(rangeMessage("{}"), "Range value is not array");
  EXPECT_EQ(rangeMessage("[]"), "Range must have 1 ir 2 entries");
  EXPECT_EQ(rangeMessage("[1, 2, 3]"), "Range must have 1 ir 2 entries");
  EXPECT_EQ(rangeMessage(R"(["1", "2"])"), "Range[0] is not number");
  EXPECT_EQ(rangeMessage(R"([1, "2"])"), "Range[1] is not number");
  EXPECT_EQ(rangeMessage("[null]"), "Range[0] is not number");
  EXPECT_EQ(typeMessage(R"(["x", []])"), "Range must have 1 ir 2 entries");
}

TEST(LoadPortTree, ReportsABadRangeBeforeABadDirection) {
  EXPECT_EQ(groupMessage(R"({"port": ["in[]", ["x"], 5], "types": []})"), "Range[0] is not number");
}

TEST(LoadPortTree, AcceptsEmptyLevels) {
  EXPECT_TRUE(treeOf("{}").empty());
  EXPECT_TRUE(treeOf(R"({"D": {}})").at("D").empty());
  EXPECT_TRUE(treeOf(R"({"D": {"S": []}})").at("D").at("S").empty());
  EXPECT_TRUE(groupOf(R"({"port": ["in[]", [1], "s"], "types": []})").types.empty());
}

TEST(LoadPortTree, LoadsAGroup) {
  const PortTypeGroup group = groupOf(
      R"({"types": [["t2", [3]], ["t1", [1, 2]], ["t2", [7, 5]]], "port": ["AUXA-in[]", [1, 8], "s"]})");
  EXPECT_EQ(group.port, "AUXA-in[{}]");
  EXPECT_EQ(group.first, 1);
  EXPECT_EQ(group.last, 8);
  EXPECT_EQ(group.direction, Direction::kSource);
  ASSERT_EQ(group.types.size(), 2U);
  EXPECT_EQ(group.types.at("t1").first, 1);
  EXPECT_EQ(group.types.at("t1").last, 2);
  EXPECT_EQ(group.types.at("t2").first, 7) << "of a repeated type the later range counts";
  EXPECT_EQ(group.types.at("t2").last, 5);
}

TEST(LoadPortTree, TakesTheRoomOfASlotsGroupsAtOnce) {
  const std::string group = R"({"port": ["in[]", [1], "s"], "types": []})";
  const PortTree tree = treeOf(fmt::format(R"({{"D": {{"S": [{0}, {0}, {0}]}}}})", group));
  EXPECT_EQ(tree.at("D").at("S").size(), 3U);
  EXPECT_EQ(tree.at("D").at("S").capacity(), 3U);
}

TEST(LoadPortTree, LoadsOneNumberAsARange) {
  const auto range = [](std::string_view json) {
    const PortTypeGroup group =
        groupOf(fmt::format(R"({{"port": ["in[]", {}, "s"], "types": []}})", json));
    return std::pair(group.first, group.last);
  };
  EXPECT_EQ(range("[5]"), std::pair(5, 5));
  EXPECT_EQ(range("[5, 5]"), std::pair(5, 5));
  EXPECT_EQ(range("[7, 3]"), std::pair(7, 3));
  EXPECT_EQ(range("[-1.9, 1e10]"), std::pair(-1, 2147483647));
  EXPECT_EQ(range("[-3000000000]"), std::pair(-2147483647 - 1, -2147483647 - 1));
}

TEST(LoadPortTree, MakesThePatternOfTheName) {
  const auto pattern = [](std::string_view name) {
    return groupOf(fmt::format(R"({{"port": ["{}", [1], "s"], "types": []}})", name)).port;
  };
  EXPECT_EQ(pattern("mixer-out[]"), "mixer-out[{}]");
  EXPECT_EQ(pattern("A[]B[]"), "A[{}]B[]");
  EXPECT_EQ(pattern("plain"), "plain");
  EXPECT_EQ(pattern("x["), "x[{}");
}

TEST(LoadPortTree, KnowsTheDirections) {
  const auto direction = [](std::string_view text) {
    return groupOf(fmt::format(R"({{"port": ["in[]", [1], "{}"], "types": []}})", text)).direction;
  };
  EXPECT_EQ(direction("s"), Direction::kSource);
  EXPECT_EQ(direction("d"), Direction::kDestination);
  for (const char* other : {"?", "x", "", "S", "source"}) {
    EXPECT_EQ(direction(other), Direction::kUnknown) << other;
  }
}

TEST(LoadPortTree, KeepsTheFirstOfARepeatedName) {
  const PortTree tree = treeOf(R"({"D": {"S": [], "S": [{"port": ["a", [1], "s"], "types": []}]},
                                   "D": {"T": []}})");
  ASSERT_EQ(tree.size(), 1U);
  ASSERT_EQ(tree.at("D").size(), 1U);
  EXPECT_TRUE(tree.at("D").at("S").empty());
}

TEST(LoadPortTree, ChecksARepeatedNameAllTheSame) {
  EXPECT_EQ(test::messageOf([] { treeOf(R"({"D": {}, "D": 1})"); }),
            "Loaded Port Tree device is not object");
  EXPECT_EQ(test::messageOf([] { treeOf(R"({"D": {"S": [], "S": 1}})"); }),
            "Loaded Port Tree Slot is not array");
}

}  // namespace
}  // namespace quenfold::unpacking
