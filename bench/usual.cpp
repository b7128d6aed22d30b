#include "usual.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "documents.h"
#include "generator/logical_text.h"
#include "generator/matrices_text.h"

namespace quenfold::bench {
namespace {

using namespace generator;

constexpr std::uint32_t kUsualSeed = 1;
constexpr std::string_view kHall = " Broadcast Hall";
constexpr std::uint32_t kMoreLabelsPercent = 14;  // of those without: 20 in 100 become 31
constexpr std::uint32_t kPortsPerSource = 65;
constexpr std::uint32_t kLevels = 17;

void lengthenNames(Plant& plant) {
  for (Device& device : plant.devices) {
    device.label += kHall;
  }
  for (Matrix& matrix : plant.matrices) {
    matrix.name.insert(matrix.name.find('.'), kHall);
  }
}

void addLabels(Plant& plant, Random& random) {
  for (Matrix& matrix : plant.matrices) {
    for (PortEntry& entry : matrix.ports) {
      if (entry.label == 0 && random.percent(kMoreLabelsPercent)) {
        entry.label = static_cast<std::uint32_t>(plant.labels.size());
        plant.labels.push_back(fmt::format("Contribution {}", entry.label));
      }
    }
  }
}

std::vector<LevelPort> allPorts(const Plant& plant) {
  std::vector<LevelPort> ports;
  for (const Matrix& matrix : plant.matrices) {
    for (const PortEntry& entry : matrix.ports) {
      ports.push_back({&entry, entry.label != 0});
    }
  }
  return ports;
}

LogicalRecord recordOf(std::int32_t id) {
  LogicalRecord record;
  record.id = id;
  record.name = fmt::format("CAM {}", id);
  record.description = fmt::format("Rack {}", id);
  record.category = {"Cameras", "Studio A"};
  record.tally = fmt::format("T{}", id);
  return record;
}

/// Each source has neighbouring ports, those of two sources lie anywhere.
LogicalTable sourcesOf(const Plant& plant, Random& random) {
  const std::vector<LevelPort> ports = allPorts(plant);
  const auto count = static_cast<std::uint32_t>(ports.size());
  LogicalTable table{Direction::source, kLevels, {}};
  for (std::uint32_t record = 0; record < std::max(count / kPortsPerSource, 1U); ++record) {
    LogicalRecord& added = table.records.emplace_back(recordOf(static_cast<int>(record) + 1));
    const std::uint32_t first = random.below(count);
    for (std::uint32_t level = 0; level < kLevels; ++level) {
      added.levels.push_back(ports[(first + level) % count]);
    }
  }
  return table;
}

}  // namespace

void writeUsual(std::uint32_t ports, const std::filesystem::path& folder) {
  Random random = seededRandom(kUsualSeed);
  PlantParameters parameters;
  parameters.ports = ports;
  Plant plant = buildPlant(parameters, random);
  lengthenNames(plant);
  addLabels(plant, random);
  const LogicalTable table = sourcesOf(plant, random);
  writeDocument(folder / "matrices.json", [&](std::ostream& out) {
    writeMatrices(plant, [&out](std::string_view piece) { out << piece; });
  });
  writeDocument(folder / "sources.json", [&](std::ostream& out) {
    writeLogicalTable(plant, table, [&out](std::string_view piece) { out << piece; });
  });
}

}  // namespace quenfold::bench
