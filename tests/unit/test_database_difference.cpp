#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "database/difference.h"
#include "support/models.h"

namespace quenfold::database {
namespace {

using test::matricesModel;
using test::recordOf;
using test::sourcesModel;
using Told = std::vector<std::string>;

std::string toldValue(std::string_view value) { return value.empty() ? "-" : std::string(value); }

/// Every difference as "<kind> <file>: <place>: <from> -> <to>", "-" for an empty text.
Told compared(const Model& from, const Model& to) {
  const Differences differences = compare(from, to);
  Told lines;
  for (std::size_t kind = 0; kind < kDifferenceKinds.size(); ++kind) {
    for (const Difference& difference : differences.of(static_cast<DifferenceKind>(kind))) {
      lines.push_back(std::string(kDifferenceKinds.at(kind).name) + " " +
                      std::string(difference.file) + ": " + std::string(difference.place) + ": " +
                      toldValue(difference.from) + " -> " + toldValue(difference.to));
    }
  }
  EXPECT_EQ(isEmpty(differences), lines.empty());
  return lines;
}

CatEntry textOf(std::string text) { return {true, 0, std::move(text)}; }
CatEntry numberOf(std::int32_t number) { return {false, number, {}}; }

LogicalIORecord withCategories(std::vector<CatEntry> categories) {
  LogicalIORecord record = recordOf(5, "CAM");
  record.categories = std::move(categories);
  return record;
}

TEST(Compare, FindsNothingInEmptyModels) { EXPECT_EQ(compared({}, {}), Told{}); }

TEST(Compare, TakesNoOrderForADifference) {
  const Model one = matricesModel({{"A", "1"}, {"B", "2"}}, {{"A.x", "1"}, {"B.x", "2"}},
                                  {{"A.s.in[1].x.ch1", "a", 0}, {"B.s.in[1].x.ch1", "b", 1}});
  const Model other = matricesModel({{"B", "2"}, {"A", "1"}}, {{"B.x", "2"}, {"A.x", "1"}},
                                    {{"B.s.in[1].x.ch1", "b", 0}, {"A.s.in[1].x.ch1", "a", 1}});
  EXPECT_EQ(compared(one, other), Told{});
  EXPECT_EQ(compared(sourcesModel({recordOf(1, "a"), recordOf(2, "b")}),
                     sourcesModel({recordOf(2, "b"), recordOf(1, "a")})),
            Told{});
}

TEST(Compare, FindsDevices) {
  EXPECT_EQ(
      compared(matricesModel({{"Desk", "1"}, {"Old", "2"}, {"Same", "3"}}, {}, {}),
               matricesModel({{"New", "4"}, {"Same", "3"}, {"Desk", ""}}, {}, {})),
      (Told{"device-added matrices.json: New: - -> -", "device-removed matrices.json: Old: - -> -",
            "device-serial-changed matrices.json: Desk: 1 -> -"}));
}

TEST(Compare, FindsMatrices) {
  EXPECT_EQ(
      compared(matricesModel({}, {{"D.a", "1"}, {"D.b", "1"}, {"D.c", "1"}}, {}),
               matricesModel({}, {{"D.d", "1"}, {"D.c", "1"}, {"D.a", "2"}}, {})),
      (Told{"matrix-added matrices.json: D.d: - -> -", "matrix-removed matrices.json: D.b: - -> -",
            "matrix-serial-changed matrices.json: D.a: 1 -> 2"}));
}

TEST(Compare, FindsPorts) {
  const Model before = matricesModel(
      {}, {{"D.a", "1"}, {"D.b", "1"}},
      {{"labelled", "Vox", 0}, {"unlabelled", "Kick", 0}, {"moved", "", 0}, {"gone", "", 0}});
  const Model after = matricesModel(
      {}, {{"D.b", "1"}, {"D.a", "1"}},
      {{"moved", "", 0}, {"new", "Hat", 1}, {"labelled", "Lead", 1}, {"unlabelled", "", 1}});
  EXPECT_EQ(
      compared(before, after),
      (Told{"port-added matrices.json: new: - -> -", "port-removed matrices.json: gone: - -> -",
            "port-label-changed matrices.json: labelled: Vox -> Lead",
            "port-label-changed matrices.json: unlabelled: Kick -> -",
            "port-matrix-changed matrices.json: moved: D.a -> D.b"}));
}

TEST(Compare, FindsBothTheLabelAndTheMatrixOfAPort) {
  EXPECT_EQ(compared(matricesModel({}, {{"D.a", "1"}, {"D.b", "1"}}, {{"p", "x", 0}}),
                     matricesModel({}, {{"D.a", "1"}, {"D.b", "1"}}, {{"p", "y", 1}})),
            (Told{"port-label-changed matrices.json: p: x -> y",
                  "port-matrix-changed matrices.json: p: D.a -> D.b"}));
}

TEST(Compare, TakesAPortListedTwiceForTwo) {
  const std::vector<Matrix> matrices = {{"D.a", "1"}};
  const Model twice = matricesModel({}, matrices, {{"p", "x", 0}, {"p", "y", 0}});
  const Model once = matricesModel({}, matrices, {{"p", "y", 0}});
  EXPECT_EQ(compared(twice, once), (Told{"port-removed matrices.json: p: - -> -",
                                         "port-label-changed matrices.json: p: x -> y"}));
  EXPECT_EQ(compared(once, twice), (Told{"port-added matrices.json: p: - -> -",
                                         "port-label-changed matrices.json: p: y -> x"}));
  EXPECT_EQ(compared(twice, twice), Told{});
}

TEST(Compare, FindsTables) {
  Model both = sourcesModel({recordOf(1, "a")});
  both.tables[kDestinations].emplace();
  EXPECT_EQ(compared({}, both), (Told{"table-added sources.json: sources.json: - -> -",
                                      "table-added destinations.json: destinations.json: - -> -"}));
  EXPECT_EQ(compared(both, {}),
            (Told{"table-removed sources.json: sources.json: - -> -",
                  "table-removed destinations.json: destinations.json: - -> -"}));
}

TEST(Compare, TellsATableWithoutRecordsFromNoTable) {
  EXPECT_EQ(compared(sourcesModel({}), sourcesModel({})), Told{});
  EXPECT_EQ(compared(sourcesModel({}), {}),
            Told{"table-removed sources.json: sources.json: - -> -"});
}

TEST(Compare, FindsRecordsInTheirTables) {
  Model before = sourcesModel({recordOf(1, "CAM \"1\""), recordOf(-2, "b")});
  before.tables[kDestinations] = std::vector{recordOf(1, "Mon")};
  Model after = sourcesModel({recordOf(-2, "b"), recordOf(3, "")});
  after.tables[kDestinations] = std::vector{recordOf(3, "Mon")};
  EXPECT_EQ(compared(before, after),
            (Told{"record-added sources.json: sources.json 3 \"\": - -> -",
                  "record-added destinations.json: destinations.json 3 \"Mon\": - -> -",
                  "record-removed sources.json: sources.json 1 \"CAM \"1\"\": - -> -",
                  "record-removed destinations.json: destinations.json 1 \"Mon\": - -> -"}));
}

TEST(Compare, FindsTheFieldsOfARecord) {
  LogicalIORecord before = recordOf(7, "CAM");
  before.tally = "T1";
  before.description = "left";
  LogicalIORecord after = recordOf(7, "Crane");
  after.redirect = -3;
  after.description = "right";
  EXPECT_EQ(
      compared(sourcesModel({before}), sourcesModel({after})),
      (Told{"record-name-changed sources.json: sources.json 7 \"CAM\": CAM -> Crane",
            "record-tally-changed sources.json: sources.json 7 \"CAM\": T1 -> -",
            "record-redirect-changed sources.json: sources.json 7 \"CAM\": 1 -> -3",
            "record-description-changed sources.json: sources.json 7 \"CAM\": left -> right"}));
}

TEST(Compare, FindsThePortsOfARecordByPosition) {
  EXPECT_EQ(compared(sourcesModel({recordOf(7, "CAM", {"a", "", "c", "d"})}),
                     sourcesModel({recordOf(7, "CAM", {"a", "b", "x"})})),
            (Told{"record-port-changed sources.json: sources.json 7 \"CAM\" port 2: - -> b",
                  "record-port-changed sources.json: sources.json 7 \"CAM\" port 3: c -> x",
                  "record-port-changed sources.json: sources.json 7 \"CAM\" port 4: d -> -"}));
}

TEST(Compare, TakesNoEmptyPortAtTheEndForADifference) {
  const Model bare = sourcesModel({recordOf(7, "CAM", {"", "a"})});
  const Model padded = sourcesModel({recordOf(7, "CAM", {"", "a", "", ""})});
  EXPECT_EQ(compared(bare, padded), Told{});
  EXPECT_EQ(compared(padded, bare), Told{});
  EXPECT_EQ(
      compared(sourcesModel({recordOf(7, "CAM", {"", ""})}), sourcesModel({recordOf(7, "CAM")})),
      Told{});
}

TEST(Compare, FindsTheCategoriesOfARecordByPosition) {
  EXPECT_EQ(
      compared(sourcesModel({withCategories({textOf("Studio"), numberOf(12), textOf("x")})}),
               sourcesModel({withCategories({textOf("Studio"), textOf("13")})})),
      (Told{"record-category-changed sources.json: sources.json 5 \"CAM\" category 2: 12 -> 13",
            "record-category-changed sources.json: sources.json 5 \"CAM\" category 3: x -> -"}));
}

TEST(Compare, TakesCategoriesForTheirTexts) {
  EXPECT_EQ(compared(sourcesModel({withCategories({numberOf(-5), textOf("a"), textOf("")})}),
                     sourcesModel({withCategories({textOf("-5"), textOf("a")})})),
            Told{});
}

TEST(Compare, CountsSixCategories) {
  const auto sevenWith = [](std::string sixth, std::string seventh) {
    return sourcesModel(
        {withCategories({textOf("1"), textOf("2"), textOf("3"), textOf("4"), textOf("5"),
                         textOf(std::move(sixth)), textOf(std::move(seventh))})});
  };
  EXPECT_EQ(compared(sevenWith("6", "7"), sevenWith("6", "8")), Told{});
  EXPECT_EQ(
      compared(sevenWith("6", "7"), sevenWith("0", "7")),
      Told{"record-category-changed sources.json: sources.json 5 \"CAM\" category 6: 6 -> 0"});
}

TEST(Compare, BringsTheNthRecordOfAnIdTogetherWithTheNth) {
  EXPECT_EQ(compared(sourcesModel({recordOf(1, "a"), recordOf(1, "b"), recordOf(1, "c")}),
                     sourcesModel({recordOf(1, "a"), recordOf(1, "x")})),
            (Told{"record-removed sources.json: sources.json 1 \"c\": - -> -",
                  "record-name-changed sources.json: sources.json 1 \"b\": b -> x"}));
}

TEST(Compare, GivesTextsThatOutliveItsRun) {
  const Model before = sourcesModel({withCategories({numberOf(1)})});
  const Model after = sourcesModel({withCategories({numberOf(2)})});
  Differences differences = compare(before, after);
  const Differences moved = std::move(differences);
  ASSERT_EQ(moved.of(DifferenceKind::kRecordCategoryChanged).size(), 1U);
  const Difference& difference = moved.of(DifferenceKind::kRecordCategoryChanged).front();
  EXPECT_EQ(difference.place, "sources.json 5 \"CAM\" category 1");
  EXPECT_EQ(difference.from, "1");
  EXPECT_EQ(difference.to, "2");
}

}  // namespace
}  // namespace quenfold::database
