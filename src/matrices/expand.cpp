#include "matrices/expand.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "app/limits.h"
#include "matrices/port_pattern.h"

namespace quenfold::unpacking {
namespace {

/// How many numbers a range holds, up to 2^32.
std::uint64_t lengthOf(std::int32_t first, std::int32_t last) {
  const std::int64_t length = std::int64_t{last} - first + 1;
  return static_cast<std::uint64_t>(std::max<std::int64_t>(length, 0));
}

/// Device key to its first label record.
using DeviceIndex = std::unordered_map<std::string_view, const DeviceLabel*>;

DeviceIndex indexById(const std::vector<DeviceLabel>& deviceLabels) {
  DeviceIndex index;
  for (const DeviceLabel& device : deviceLabels) {
    index.emplace(device.id, &device);
  }
  return index;
}

/// A device without a record keeps its key as its name and has no serial and no ID.
DeviceLabel identify(const std::string& deviceKey, const DeviceIndex& index) {
  const auto found = index.find(deviceKey);
  return found == index.end() ? DeviceLabel{"", deviceKey, ""} : *found->second;
}

/// Counts what the tree becomes when it is written out, before anything is. A few bytes of ranges,
/// a width or a name shared by many ports would fill any memory.
class Survey {
 public:
  explicit Survey(Budget& nameBytes) : nameBytes_(nameBytes) {}

  void add(const DeviceLabel& device, const std::string& slot, const PortTypeGroup& group) {
    const std::uint64_t numbers = lengthOf(group.first, group.last);
    for (const auto& [type, channels] : group.types) {
      nameBytes_.take(device.label.size() + device.serial.size() + type.size());
      const std::uint64_t channelCount = lengthOf(channels.first, channels.last);
      if (numbers == 0 || channelCount == 0) {
        continue;
      }
      portBudget_.takeTimes(numbers, channelCount);
      ports_ += numbers * channelCount;
      const std::uint64_t suffix =
          slot.size() + longestPortText(group.port, group.first, group.last) + type.size() +
          longestNumber(channels.first, channels.last) + kSuffixMarks;
      // The port is written twice and looked up under its device's ID.
      nameBytes_.takeTimes(numbers * channelCount, device.label.size() + device.serial.size() +
                                                       device.id.size() + 3 * suffix);
    }
  }

  [[nodiscard]] std::size_t ports() const { return static_cast<std::size_t>(ports_); }

 private:
  static constexpr std::uint64_t kSuffixMarks = 6;  // three points and ".ch"

  Budget& nameBytes_;
  Budget portBudget_{"too many ports", kMaxPorts};
  std::uint64_t ports_ = 0;
};

class Expander {
 public:
  Expander(const PortLabelMap& portLabels, Budget& nameBytes, ExpandedTree& expanded)
      : portLabels_(portLabels), nameBytes_(nameBytes), expanded_(expanded) {}

  void expand(const DeviceLabel& device, const std::string& slot, const PortTypeGroup& group) {
    for (const auto& [type, channels] : group.types) {
      MatrixEntry& matrix =
          expanded_.matrices
              .try_emplace(fmt::format("{}.{}", device.label, type), MatrixEntry{device.serial, {}})
              .first->second;
      if (channels.first <= channels.last) {
        expandType({device, slot, group, type, channels, matrix});
      }
    }
  }

 private:
  /// All that the ports of one type of one group have in common.
  struct PortFamily {
    const DeviceLabel& device;
    const std::string& slot;
    const PortTypeGroup& group;
    const std::string& type;
    const Range& channels;
    MatrixEntry& matrix;
  };

  /// The counters are wider than the numbers: a range may end at the largest of them.
  void expandType(const PortFamily& family) {
    for (std::int64_t port = family.group.first; port <= family.group.last; ++port) {
      // Formatted here, so that a bad pattern is an error only where a port is written with it.
      const std::string portText = formatPort(family.group.port, static_cast<std::int32_t>(port));
      for (std::int64_t ch = family.channels.first; ch <= family.channels.last; ++ch) {
        addPort(family, fmt::format(".{}.{}.{}.ch{}", family.slot, portText, family.type, ch));
      }
    }
  }

  void addPort(const PortFamily& family, std::string_view suffix) {
    const DeviceLabel& device = family.device;
    const UnpackedPort& port = expanded_.allPorts.emplace_back(
        UnpackedPort{std::string(device.label).append(suffix),
                     std::string(device.serial).append(suffix), labelOf(device, suffix)});
    family.matrix.ports.push_back(&port);
    if (family.group.direction == Direction::kSource) {
      expanded_.inputs.push_back(&port);
    } else if (family.group.direction == Direction::kDestination) {
      expanded_.outputs.push_back(&port);
    }
  }

  std::string_view labelOf(const DeviceLabel& device, std::string_view suffix) {
    key_.assign(device.id).append(suffix);
    const auto found = portLabels_.find(key_);
    if (found == portLabels_.end()) {
      return {};
    }
    nameBytes_.take(found->second.size());  // once for every port of that name
    return found->second;
  }

  const PortLabelMap& portLabels_;
  Budget& nameBytes_;
  ExpandedTree& expanded_;
  std::string key_;
};

/// Calls visit(device, slot name, group) for every group in the order of writing.
template <typename Visit>
void forEachGroup(const PortTree& tree, const DeviceIndex& index, Visit visit) {
  for (const auto& [deviceKey, slots] : tree) {
    const DeviceLabel device = identify(deviceKey, index);
    for (const auto& [slotName, groups] : slots) {
      for (const PortTypeGroup& group : groups) {
        visit(device, slotName, group);
      }
    }
  }
}

}  // namespace

ExpandedTree expandPortTree(const PortTree& tree, const std::vector<DeviceLabel>& deviceLabels,
                            const PortLabelMap& portLabels) {
  const DeviceIndex index = indexById(deviceLabels);
  Budget nameBytes("too many bytes of port names", kMaxTextBytes);
  Survey survey(nameBytes);
  forEachGroup(tree, index, [&](const auto&... group) { survey.add(group...); });
  ExpandedTree expanded;
  // Room for all of them at once: the references stay valid while the list fills.
  expanded.allPorts.reserve(survey.ports());
  Expander expander(portLabels, nameBytes, expanded);
  forEachGroup(tree, index, [&](const auto&... group) { expander.expand(group...); });
  return expanded;
}

}  // namespace quenfold::unpacking
