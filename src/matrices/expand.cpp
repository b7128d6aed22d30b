#include "matrices/expand.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "app/error.h"

namespace quenfold::unpacking {
namespace {

/// How many numbers a range holds, up to 2^32.
std::uint64_t lengthOf(std::int32_t first, std::int32_t last) {
  const std::int64_t length = std::int64_t{last} - first + 1;
  return static_cast<std::uint64_t>(std::max<std::int64_t>(length, 0));
}

constexpr std::uint64_t kTooMany = kMaxUnpackedPorts + 1;

/// The ports of a group; all counts above the limit are one. Cut to that, no product can wrap.
std::uint64_t countPorts(const PortTypeGroup& group) {
  const std::uint64_t ports = std::min(lengthOf(group.first, group.last), kTooMany);
  std::uint64_t total = 0;
  for (const auto& [name, channels] : group.types) {
    total += ports * std::min(lengthOf(channels.first, channels.last), kTooMany);
    total = std::min(total, kTooMany);
  }
  return total;
}

/// At most kMaxUnpackedPorts, which fits every host's sizes.
std::size_t countPorts(const PortTree& tree) {
  std::uint64_t total = 0;
  for (const auto& [deviceKey, slots] : tree) {
    for (const auto& [slotName, groups] : slots) {
      for (const PortTypeGroup& group : groups) {
        total += countPorts(group);
        if (total > kMaxUnpackedPorts) {
          throw runtimeError("too many ports: more than {}", kMaxUnpackedPorts);
        }
      }
    }
  }
  return static_cast<std::size_t>(total);
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

class Expander {
 public:
  Expander(const PortLabelMap& portLabels, ExpandedTree& expanded)
      : portLabels_(portLabels), expanded_(expanded) {}

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
      const std::string portText =
          fmt::format(fmt::runtime(family.group.port), static_cast<std::int32_t>(port));
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
    return found == portLabels_.end() ? std::string_view() : found->second;
  }

  const PortLabelMap& portLabels_;
  ExpandedTree& expanded_;
  std::string key_;
};

}  // namespace

ExpandedTree expandPortTree(const PortTree& tree, const std::vector<DeviceLabel>& deviceLabels,
                            const PortLabelMap& portLabels) {
  ExpandedTree expanded;
  // Room for all of them at once: the references stay valid while the list fills.
  expanded.allPorts.reserve(countPorts(tree));
  const DeviceIndex index = indexById(deviceLabels);
  Expander expander(portLabels, expanded);
  for (const auto& [deviceKey, slots] : tree) {
    const DeviceLabel device = identify(deviceKey, index);
    for (const auto& [slotName, groups] : slots) {
      for (const PortTypeGroup& group : groups) {
        expander.expand(device, slotName, group);
      }
    }
  }
  return expanded;
}

}  // namespace quenfold::unpacking
