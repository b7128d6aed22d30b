#include "generator/logical_io.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace quenfold::generator {
namespace {

constexpr std::uint32_t kEntriesPerRecord = 32;
constexpr std::uint32_t kFewestLevels = 8;
constexpr std::uint32_t kMostLevels = 17;

constexpr std::array<std::string_view, 7> kNameStems{"CAM",    "VTR",        "Régie", "MIC",
                                                     "Server", "Wall \"B\"", "Line"};

constexpr std::array<std::string_view, 6> kCategories{"Cameras",   "Playout", "Studio A",
                                                      "Extérieur", "12",      "3"};

using Ports = std::vector<const PortEntry*>;

Ports portsOf(const Plant& plant, Direction direction) {
  Ports ports;
  for (const Matrix& matrix : plant.matrices) {
    for (const PortEntry& entry : matrix.ports) {
      if (kPortPrefixes[entry.prefix].direction == direction && entry.number >= 0) {
        ports.push_back(&entry);
      }
    }
  }
  return ports;
}

/// Runs of neighbouring ports with gaps between them.
std::vector<LevelPort> drawLevels(const Ports& ports, std::uint32_t count, bool messy,
                                  Random& random) {
  std::vector<LevelPort> levels(count);
  if (ports.empty()) {
    return levels;
  }
  const auto total = static_cast<std::uint32_t>(ports.size());
  std::uint32_t port = random.below(total);
  for (LevelPort& level : levels) {
    if (random.percent(30)) {
      port = random.below(total);
      continue;
    }
    level.entry = ports[port];
    level.byLabel = level.entry->label != 0 && !(messy && random.percent(50));
    port = (port + 1) % total;
  }
  return levels;
}

std::array<std::string, 6> drawCategory(Random& random) {
  std::array<std::string, 6> category;
  std::uint32_t left = random.below(4);
  for (std::string& entry : category) {
    if (left-- == 0) {
      break;
    }
    entry = kCategories[random.below(kCategories.size())];
  }
  return category;
}

/// The drawn members, in a fixed order; the caller gives the levels.
LogicalRecord drawRecord(std::int32_t id, Random& random) {
  LogicalRecord record;
  record.id = id;
  record.name = fmt::format("{} {}", kNameStems[random.below(kNameStems.size())], id);
  if (random.percent(40)) {
    record.description = fmt::format("Rack {}\tUnité {}", random.between(1, 40), id);
  }
  record.category = drawCategory(random);
  if (random.percent(25)) {
    record.tally = fmt::format("T{}", id);
  }
  if (random.percent(10)) {
    record.redirect = static_cast<std::int32_t>(random.below(8));
  }
  return record;
}

}  // namespace

LogicalTable buildLogicalTable(const Plant& plant, Direction direction, Random& random) {
  std::uint64_t entries = 0;
  for (const Matrix& matrix : plant.matrices) {
    entries += matrix.ports.size();
  }
  const Ports ports = portsOf(plant, direction);
  LogicalTable table{direction, random.between(kFewestLevels, kMostLevels), {}};
  const std::uint64_t records = std::max<std::uint64_t>(entries / kEntriesPerRecord, 1);
  std::int32_t id = 0;
  while (table.records.size() < records) {
    id += random.percent(10) ? 5 : 1;
    LogicalRecord& record = table.records.emplace_back(drawRecord(id, random));
    record.levels = drawLevels(ports, table.levels, plant.messy, random);
  }
  return table;
}

}  // namespace quenfold::generator
