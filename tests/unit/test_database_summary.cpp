#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "database/summary.h"
#include "support/port_trees.h"
#include "support/scratch.h"

namespace quenfold::database {
namespace {

using test::destinationsOf;
using test::dictOf;
using test::sourcesOf;

void addTable(PackedDatabase& database, Table table, std::size_t records,
              const FieldWidths& widths) {
  PackedTable& added = database.tables.at(table).emplace();
  added.records.resize(records);
  added.context.portDict = dictOf(widths);
}

TEST(Summarise, CountsNothingInAnEmptyDatabase) {
  const PackedDatabase database;
  const Summary summary = summarise(database);
  EXPECT_EQ(summary.ports, 0U);
  EXPECT_EQ(summary.portLabels, 0U);
  EXPECT_TRUE(summary.devices.empty());
  EXPECT_TRUE(summary.tables.empty());
}

TEST(Summarise, CountsPortsByDirection) {
  PackedDatabase database;
  database.tree = {{"A",
                    {{"s",
                      {sourcesOf("in[{}]", {1, 3}, {{"a", {1, 2}}, {"v", {1, 1}}}),
                       destinationsOf("out[{}]", {1, 2}, {{"a", {1, 1}}})}}}},
                   {"B", {{"s", {{"x[{}]", 1, 4, {{"a", {1, 1}}}, Direction::kUnknown}}}}}};
  database.portLabels.assign("A.s.in[1].a.ch1", "Vox");
  database.portLabels.assign("no.port", "Kick");
  database.portLabels.assign("A.s.in[2].a.ch1", "");  // none
  const Summary summary = summarise(database);
  EXPECT_EQ(summary.ports, 15U);
  EXPECT_EQ(summary.inputs, 9U);
  EXPECT_EQ(summary.outputs, 2U);
  EXPECT_EQ(summary.portLabels, 2U);
}

TEST(Summarise, ListsDevicesByTheirRecordsThenThoseOfTheTree) {
  PackedDatabase database;
  database.devices = {{"N2", "Second", "N2"}, {"N9", "Idle", "N9"}, {"N1", "First", "N1"}};
  database.tree = {{"N0", {{"s", {sourcesOf("in[{}]", {1, 1}, {{"a", {1, 1}}})}}}},
                   {"N1", {{"s", {sourcesOf("in[{}]", {1, 2}, {{"a", {1, 2}}})}}}},
                   {"N2",
                    {{"s", {sourcesOf("in[{}]", {5, 4}, {{"a", {1, 2}}})}},
                     {"t", {sourcesOf("in[{}]", {1, 1}, {{"a", {1, 2}}, {"b", {1, 1}}})}}}},
                   {"N3", {}}};
  const Summary summary = summarise(database);
  ASSERT_EQ(summary.devices.size(), 5U);
  EXPECT_EQ(summary.devices[0].record, &database.devices[0]);
  EXPECT_EQ(summary.devices[0].slots, &database.tree["N2"]);
  EXPECT_EQ(summary.devices[0].ports, 3U);
  EXPECT_EQ(summary.devices[1].record, &database.devices[1]);
  EXPECT_EQ(summary.devices[1].slots, nullptr);
  EXPECT_EQ(summary.devices[1].ports, 0U);
  EXPECT_EQ(summary.devices[2].id, "N1");
  EXPECT_EQ(summary.devices[2].ports, 4U);
  EXPECT_EQ(summary.devices[3].id, "N0");
  EXPECT_EQ(summary.devices[3].record, nullptr);
  EXPECT_EQ(summary.devices[3].ports, 1U);
  EXPECT_EQ(summary.devices[4].id, "N3");
  EXPECT_EQ(summary.devices[4].slots, &database.tree["N3"]);
  EXPECT_EQ(summary.devices[4].ports, 0U);
}

TEST(Summarise, GivesThePortsToTheFirstRecordOfAnId) {
  PackedDatabase database;
  database.devices = {{"N", "One", "N"}, {"N", "Two", "N"}};
  database.tree = {{"N", {{"s", {sourcesOf("in[{}]", {1, 2}, {{"a", {1, 1}}})}}}}};
  const Summary summary = summarise(database);
  ASSERT_EQ(summary.devices.size(), 2U);
  EXPECT_EQ(summary.devices[0].ports, 2U);
  EXPECT_EQ(summary.devices[1].record, &database.devices[1]);
  EXPECT_EQ(summary.devices[1].ports, 0U);
  EXPECT_EQ(summary.devices[1].slots, nullptr);
}

TEST(Summarise, CountsTheRecordsOfTheTablesThatAreThere) {
  PackedDatabase database;
  addTable(database, kDestinations, 3, {1, 2, 3, 0, 0, 0});
  Summary summary = summarise(database);
  ASSERT_EQ(summary.tables.size(), 1U);
  EXPECT_EQ(summary.tables[0].file, "destinations.json");
  EXPECT_EQ(summary.tables[0].records, 3U);
  EXPECT_EQ(packedBits(*summary.tables[0].portDict), 6U);
  addTable(database, kSources, 0, {});
  summary = summarise(database);
  ASSERT_EQ(summary.tables.size(), 2U);
  EXPECT_EQ(summary.tables[0].file, "sources.json");
  EXPECT_EQ(summary.tables[0].records, 0U);
}

TEST(Summarise, ThrowsWhatExpandingThrows) {
  PackedDatabase database;
  database.treePath = "db/tree.json";
  database.tree = {{"N", {{"s", {sourcesOf("in[{}]", {1, 2147483647}, {{"a", {1, 1}}})}}}}};
  EXPECT_EQ(test::messageOf([&] { summarise(database); }),
            "db/tree.json: too many ports: more than 67108864");
}

TEST(PackedBits, AreTheHighestThatAFieldTakes) {
  EXPECT_EQ(packedBits({}), 0U);
  EXPECT_EQ(packedBits(dictOf({2, 1, 4, 1, 2, 3})), 13U);
  EXPECT_EQ(packedBits(dictOf({2, 0, 0, 0, 0, 0})), 2U);
  EXPECT_EQ(packedBits(dictOf({8, 8, 8, 4, 4, 1})), 33U);
}

TEST(PackedBits, TakesWidthsAsTheFileGivesThem) {
  EXPECT_EQ(packedBits(dictOf({2147483647, 0, 0, 0, 0, 1})), 2147483648U);
  // A field of less than one bit takes none, but moves the next one down.
  EXPECT_EQ(packedBits(dictOf({3, -1, 4, 0, 0, 0})), 6U);
}

TEST(FieldBits, TakesNoWidthBelowOne) {
  const PortDict dict = dictOf({3, -1, 0, 0, 0, 7});
  EXPECT_EQ(fieldBits(dict, kCh), 3U);
  EXPECT_EQ(fieldBits(dict, kType), 0U);
  EXPECT_EQ(fieldBits(dict, kDevice), 7U);
}

TEST(PartsOf, SpellsAPatternAsItsFileDoes) {
  const PatternParts parts = partsOf("AUXA-in[{}]x");
  EXPECT_EQ(parts.front, "AUXA-in[");
  EXPECT_EQ(parts.back, "]x");
  EXPECT_TRUE(parts.numbered);
  const PatternParts bare = partsOf("black{}");
  EXPECT_EQ(bare.front, "black{}");
  EXPECT_EQ(bare.back, "");
  EXPECT_FALSE(bare.numbered);
}

TEST(AllBytes, AddsUpLargeFiles) {
  EXPECT_EQ(allBytes({}), 0U);
  EXPECT_EQ(allBytes({{"a", 4294967295U}, {"b", 2}}), 4294967297U);
}

}  // namespace
}  // namespace quenfold::database
