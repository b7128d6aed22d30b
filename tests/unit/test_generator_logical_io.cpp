#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <utility>

#include "generator/port_tables.h"
#include "json/cjson_tree.h"
#include "support/plants.h"

namespace quenfold::generator {
namespace {

TEST(GeneratorLogicalTable, IsTheSameOnEveryHost) {
  const Plant plant = plantOf(1000, 1);
  EXPECT_EQ(sumOf(tableTextOf(plant, Direction::source)), 11075032793295338630U);
  EXPECT_EQ(sumOf(tableTextOf(plant, Direction::destination)), 4401966058498700676U);
}

TEST(GeneratorLogicalTable, HasThePrintedLayout) {
  for (const bool messy : {false, true}) {
    const Plant plant = plantOf(2000, 9, messy);
    for (const Direction direction : {Direction::source, Direction::destination}) {
      const std::string text = tableTextOf(plant, direction);
      CJsonDocument tree = parseCJson(text);
      ASSERT_TRUE(tree);
      EXPECT_EQ(printed(std::move(tree)), text);
    }
  }
}

TEST(GeneratorLogicalTable, NamesPortsOfItsDirection) {
  const Plant plant = plantOf(2000, 9);
  for (const Direction direction : {Direction::source, Direction::destination}) {
    std::size_t named = 0;
    for (const LogicalRecord& record : tableOf(plant, direction).records) {
      for (const LevelPort& level : record.levels) {
        if (level.entry != nullptr) {
          EXPECT_EQ(kPortPrefixes[level.entry->prefix].direction, direction);
          EXPECT_EQ(level.byLabel, level.entry->label != 0);
          ++named;
        }
      }
    }
    EXPECT_GT(named, 100U);
  }
}

TEST(GeneratorLogicalTable, MessyNamesPortsByLabelAndByKey) {
  const Plant plant = plantOf(2000, 9, true);
  std::set<bool> ways;
  for (const LogicalRecord& record : tableOf(plant, Direction::source).records) {
    for (const LevelPort& level : record.levels) {
      if (level.entry != nullptr && level.entry->label != 0) {
        ways.insert(level.byLabel);
        EXPECT_GE(level.entry->number, 0);
      }
    }
  }
  EXPECT_EQ(ways.size(), 2U);
}

TEST(GeneratorLogicalTable, RecordsKeepTheirForm) {
  const Plant plant = plantOf(2000, 9);
  const LogicalTable table = tableOf(plant, Direction::destination);
  EXPECT_EQ(table.records.size(), 62U);
  std::int32_t lastId = 0;
  for (const LogicalRecord& record : table.records) {
    EXPECT_EQ(record.levels.size(), table.levels);
    EXPECT_GT(record.id, lastId);
    lastId = record.id;
    const auto firstEmpty = std::find(record.category.begin(), record.category.end(), "");
    EXPECT_TRUE(std::all_of(firstEmpty, record.category.end(),
                            [](const std::string& entry) { return entry.empty(); }));
  }
}

TEST(GeneratorLogicalTable, PlantWithoutPortsOfTheDirectionHasEmptyLevels) {
  Plant plant = plantOf(10, 1);
  plant.matrices.clear();
  const LogicalTable table = tableOf(plant, Direction::source);
  ASSERT_EQ(table.records.size(), 1U);
  for (const LevelPort& level : table.records.front().levels) {
    EXPECT_EQ(level.entry, nullptr);
  }
}

}  // namespace
}  // namespace quenfold::generator
