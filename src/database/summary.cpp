#include "database/summary.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <unordered_map>

#include "app/key_hash.h"
#include "database/expand_tree.h"
#include "matrices/format.h"

namespace quenfold::database {
namespace {

using unpacking::ExpandedTree;
using unpacking::PortTree;
using unpacking::SlotMap;

/// By `Direction`.
constexpr std::array<std::string_view, 3> kDirectionNames = {"source", "destination", "neither"};

using Devices = std::unordered_map<std::string_view, DeviceSummary, TextHash>;

/// Walks the blocks beside the tree, in whose order they are.
class PortCounter {
 public:
  explicit PortCounter(const ExpandedTree& expanded) : expanded_(expanded) {}

  /// The ports of the next device of the tree.
  std::size_t count(const SlotMap& slots) {
    const std::size_t first = firstPort();
    for (const auto& [slot, groups] : slots) {
      for (const unpacking::PortTypeGroup& group : groups) {
        while (block_ < expanded_.blocks.size() && expanded_.blocks[block_].ports.group == &group) {
          ++block_;
        }
      }
    }
    return firstPort() - first;
  }

 private:
  [[nodiscard]] std::size_t firstPort() const {
    return block_ < expanded_.blocks.size() ? expanded_.blocks[block_].firstPort : expanded_.ports;
  }

  const ExpandedTree& expanded_;
  std::size_t block_ = 0;
};

Devices devicesOfTree(const PortTree& tree, const ExpandedTree& expanded) {
  Devices devices;
  PortCounter counter(expanded);
  for (const auto& [id, slots] : tree) {
    devices.emplace(id, DeviceSummary{id, nullptr, &slots, counter.count(slots)});
  }
  return devices;
}

/// Of records with one id the first has the ports.
std::vector<DeviceSummary> devicesOf(const PackedDatabase& database, const ExpandedTree& expanded) {
  Devices inTree = devicesOfTree(database.tree, expanded);
  std::vector<DeviceSummary> devices;
  for (const DeviceLabel& record : database.devices) {
    const auto taken = inTree.extract(record.id);
    DeviceSummary& device = devices.emplace_back(
        taken ? taken.mapped() : DeviceSummary{record.id, nullptr, nullptr, 0});
    device.record = &record;
  }
  for (const auto& [id, slots] : database.tree) {
    const auto left = inTree.find(id);
    if (left != inTree.end()) {
      devices.push_back(left->second);
    }
  }
  return devices;
}

}  // namespace

Summary summarise(const PackedDatabase& database) {
  // Who bears the labels does not matter here, and no port need be spelled to look for one.
  const PortLabelMap noLabels;
  const ExpandedTree expanded = expandTree(database, noLabels);
  Summary summary;
  summary.ports = expanded.ports;
  summary.inputs = expanded.inputs;
  summary.outputs = expanded.outputs;
  const PortLabelMap::Entries& labels = database.portLabels.entries();
  summary.portLabels = static_cast<std::size_t>(
      std::count_if(labels.begin(), labels.end(),
                    [](const PortLabelMap::Entry& entry) { return !entry.label.empty(); }));
  summary.devices = devicesOf(database, expanded);
  for (const Table table : kTables) {
    const std::optional<PackedTable>& packed = database.tables.at(table);
    if (packed) {
      summary.tables.push_back(
          {kTableFiles.at(table), packed->records.size(), &packed->context.portDict});
    }
  }
  return summary;
}

std::uint64_t packedBits(const PortDict& portDict) {
  std::uint64_t bits = 0;
  for (std::size_t field = 0; field < kPortFieldCount; ++field) {
    const std::uint64_t width = fieldBits(portDict, field);
    if (width > 0) {
      bits = std::max(bits, portDict.shift.at(field) + width);
    }
  }
  return bits;
}

std::uint32_t fieldBits(const PortDict& portDict, std::size_t field) {
  return static_cast<std::uint32_t>(std::max(portDict.bits.at(field), 0));
}

std::string_view directionName(Direction direction) {
  return kDirectionNames.at(static_cast<std::size_t>(direction));
}

PatternParts partsOf(std::string_view pattern) {
  constexpr std::string_view kNumber = "[{}";
  const std::size_t open = pattern.find(kNumber);
  if (open == std::string_view::npos) {
    return {pattern, {}, false};
  }
  return {pattern.substr(0, open + 1), pattern.substr(open + kNumber.size()), true};
}

std::uint64_t allBytes(const std::vector<FileSize>& files) {
  return std::accumulate(
      files.begin(), files.end(), std::uint64_t{0},
      [](std::uint64_t bytes, const FileSize& file) { return bytes + file.bytes; });
}

}  // namespace quenfold::database
