#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "database/port_folding.h"

namespace quenfold::database {
namespace {

using Folded = std::vector<std::pair<std::string, std::size_t>>;

std::vector<Difference> differencesAt(const std::vector<std::string>& places) {
  std::vector<Difference> differences;
  differences.reserve(places.size());
  for (const std::string& place : places) {
    differences.push_back({"matrices.json", place, {}, {}});
  }
  return differences;
}

Folded foldedChanges(const std::vector<Difference>& differences) {
  Folded places;
  for (std::size_t next = 0; next < differences.size(); next += places.back().second) {
    const FoldedPlace place = foldPorts(differences, next);
    places.emplace_back(place.place, place.count);
    if (place.count == 0) {
      ADD_FAILURE() << "no end";
      break;
    }
  }
  return places;
}

Folded folded(const std::vector<std::string>& places) {
  return foldedChanges(differencesAt(places));
}

TEST(PlainNumber, IsWhatPrintingGives) {
  EXPECT_EQ(plainNumber("0"), 0U);
  EXPECT_EQ(plainNumber("2147483647"), 2147483647U);
  EXPECT_EQ(plainNumber("4294967295"), 4294967295U);
  for (const char* const text : {"", "00", "07", "-1", "+1", " 1", "1 ", "1a", "4294967296", "x"}) {
    EXPECT_EQ(plainNumber(text), std::nullopt) << text;
  }
}

TEST(RangeText, HasTwoEndsWhereTheyDiffer) {
  EXPECT_EQ(rangeText(3, 3), "3");
  EXPECT_EQ(rangeText(3, 8), "3..8");
  EXPECT_EQ(rangeText(8, -3), "8..-3");
}

TEST(FoldPorts, LeavesOnePortAsItIs) {
  EXPECT_EQ(folded({"F.s.in[3].audio.ch1"}), (Folded{{"F.s.in[3].audio.ch1", 1}}));
}

TEST(FoldPorts, FoldsChannels) {
  EXPECT_EQ(folded({"F.s.in[3].audio.ch9", "F.s.in[3].audio.ch10", "F.s.in[3].audio.ch11"}),
            (Folded{{"F.s.in[3].audio.ch9..11", 3}}));
}

TEST(FoldPorts, FoldsPortsWithTheSameChannels) {
  EXPECT_EQ(folded({"F.s.in[3].audio.ch1", "F.s.in[3].audio.ch2", "F.s.in[4].audio.ch1",
                    "F.s.in[4].audio.ch2", "F.s.in[5].audio.ch1", "F.s.in[5].audio.ch2"}),
            (Folded{{"F.s.in[3..5].audio.ch1..2", 6}}));
  EXPECT_EQ(folded({"F.s.in[3].audio.ch1", "F.s.in[4].audio.ch1"}),
            (Folded{{"F.s.in[3..4].audio.ch1", 2}}));
}

TEST(FoldPorts, StopsAtGaps) {
  EXPECT_EQ(folded({"F.s.in[3].a.ch1", "F.s.in[3].a.ch3", "F.s.in[5].a.ch3"}),
            (Folded{{"F.s.in[3].a.ch1", 1}, {"F.s.in[3].a.ch3", 1}, {"F.s.in[5].a.ch3", 1}}));
}

TEST(FoldPorts, LeavesPortsWithoutANumberAlone) {
  EXPECT_EQ(folded({"a.ch1", "a.ch3"}), (Folded{{"a.ch1", 1}, {"a.ch3", 1}}));
  EXPECT_EQ(folded({"a[4.ch1", "a[5.ch1"}), (Folded{{"a[4.ch1", 1}, {"a[5.ch1", 1}}));
}

TEST(FoldPorts, LeavesPortsWithoutAChannelAlone) {
  EXPECT_EQ(folded({"a.ch1", "a.ch"}), (Folded{{"a.ch1", 1}, {"a.ch", 1}}));
}

TEST(FoldPorts, StopsAtRowsOfOtherChannels) {
  EXPECT_EQ(
      folded({"F.s.in[1].a.ch1", "F.s.in[1].a.ch2", "F.s.in[2].a.ch1", "F.s.in[3].a.ch1",
              "F.s.in[4].a.ch1", "F.s.in[4].a.ch2", "F.s.in[4].a.ch3"}),
      (Folded{{"F.s.in[1].a.ch1..2", 2}, {"F.s.in[2..3].a.ch1", 2}, {"F.s.in[4].a.ch1..3", 3}}));
  EXPECT_EQ(folded({"F.s.in[1].a.ch1", "F.s.in[1].a.ch2", "F.s.in[2].a.ch2", "F.s.in[2].a.ch3"}),
            (Folded{{"F.s.in[1].a.ch1..2", 2}, {"F.s.in[2].a.ch2..3", 2}}));
}

TEST(FoldPorts, StopsWhereAnythingElseDiffers) {
  const std::vector<std::string> ports = {"F.s.in[1].a.ch1",  "G.s.in[1].a.ch2",
                                          "G.t.in[1].a.ch3",  "G.t.out[1].a.ch4",
                                          "G.t.out[1].b.ch5", "G.t.out[1]x.b.ch6"};
  Folded alone;
  for (const std::string& port : ports) {
    alone.emplace_back(port, 1);
  }
  EXPECT_EQ(folded(ports), alone);
  EXPECT_EQ(folded({"F.s.in[1].a.ch1", "F.s.out[2].a.ch1"}),
            (Folded{{"F.s.in[1].a.ch1", 1}, {"F.s.out[2].a.ch1", 1}}));
}

TEST(FoldPorts, KeepsTheOrder) {
  EXPECT_EQ(folded({"F.s.in[2].a.ch2", "F.s.in[2].a.ch1", "F.s.in[1].a.ch1"}),
            (Folded{{"F.s.in[2].a.ch2", 1}, {"F.s.in[2].a.ch1", 1}, {"F.s.in[1].a.ch1", 1}}));
  EXPECT_EQ(folded({"F.s.in[1].a.ch1", "F.s.in[2].a.ch1", "F.s.in[1].a.ch2", "F.s.in[2].a.ch2"}),
            (Folded{{"F.s.in[1..2].a.ch1", 2}, {"F.s.in[1..2].a.ch2", 2}}));
}

TEST(FoldPorts, TakesAPortListedTwiceForTwo) {
  EXPECT_EQ(folded({"F.s.in[1].a.ch1", "F.s.in[1].a.ch1", "F.s.in[1].a.ch2"}),
            (Folded{{"F.s.in[1].a.ch1", 1}, {"F.s.in[1].a.ch1..2", 2}}));
}

TEST(FoldPorts, FoldsPlainNumbersOnly) {
  const std::vector<std::string> ports = {"F.s.in[1].a.ch-1", "F.s.in[1].a.ch0", "F.s.in[1].a.ch01",
                                          "F.s.in[1].a.ch02", "F.s.in[1].a.ch 3"};
  Folded alone;
  for (const std::string& port : ports) {
    alone.emplace_back(port, 1);
  }
  EXPECT_EQ(folded(ports), alone);
  EXPECT_EQ(folded({"F.s.in[-1].a.ch1", "F.s.in[0].a.ch1", "F.s.in[01].a.ch1", "F.s.in[].a.ch1"}),
            (Folded{{"F.s.in[-1].a.ch1", 1},
                    {"F.s.in[0].a.ch1", 1},
                    {"F.s.in[01].a.ch1", 1},
                    {"F.s.in[].a.ch1", 1}}));
}

TEST(FoldPorts, FoldsTheChannelsOfPortsWithoutAPlainNumber) {
  EXPECT_EQ(
      folded({"F.s.black.a.ch1", "F.s.black.a.ch2", "F.s.in[-1].a.ch1", "F.s.in[-1].a.ch2",
              "F.s.in[7.a.ch1", "F.s.in[7.a.ch2"}),
      (Folded{{"F.s.black.a.ch1..2", 2}, {"F.s.in[-1].a.ch1..2", 2}, {"F.s.in[7.a.ch1..2", 2}}));
}

TEST(FoldPorts, ReachesTheLargestNumbers) {
  EXPECT_EQ(folded({"F.s.in[2147483646].a.ch2147483646", "F.s.in[2147483646].a.ch2147483647",
                    "F.s.in[2147483647].a.ch2147483646", "F.s.in[2147483647].a.ch2147483647"}),
            (Folded{{"F.s.in[2147483646..2147483647].a.ch2147483646..2147483647", 4}}));
  EXPECT_EQ(folded({"F.s.in[4294967295].a.ch4294967295", "F.s.in[4294967295].a.ch0",
                    "F.s.in[0].a.ch4294967295"}),
            (Folded{{"F.s.in[4294967295].a.ch4294967295", 1},
                    {"F.s.in[4294967295].a.ch0", 1},
                    {"F.s.in[0].a.ch4294967295", 1}}));
}

TEST(FoldPorts, TakesTextsThatAreNoPorts) {
  const std::vector<std::string> texts = {"", "ch1", "ch2", "7", "8", "[1]", "x[1].y", "x[2].y"};
  EXPECT_EQ(
      folded(texts),
      (Folded{
          {"", 1}, {"ch1..2", 2}, {"7", 1}, {"8", 1}, {"[1]", 1}, {"x[1].y", 1}, {"x[2].y", 1}}));
}

TEST(FoldPorts, FoldsWhatChangedInTheSameWay) {
  const std::vector<Difference> moved = {{"matrices.json", "F.s.in[1].a.ch1", "F.a", "F.b"},
                                         {"matrices.json", "F.s.in[1].a.ch2", "F.a", "F.b"},
                                         {"matrices.json", "F.s.in[1].a.ch3", "F.a", "F.c"},
                                         {"matrices.json", "F.s.in[2].a.ch3", "F.a", "F.c"},
                                         {"matrices.json", "F.s.in[3].a.ch3", "F.d", "F.c"}};
  EXPECT_EQ(foldedChanges(moved),
            (Folded{{"F.s.in[1].a.ch1..2", 2}, {"F.s.in[1..2].a.ch3", 2}, {"F.s.in[3].a.ch3", 1}}));
}

}  // namespace
}  // namespace quenfold::database
