#include "matrices/expand.h"

#include <algorithm>
#include <cstdint>
#include <limits>
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
DeviceNames identify(const std::string& deviceKey, const DeviceIndex& index) {
  const auto found = index.find(deviceKey);
  if (found == index.end()) {
    return {deviceKey, "", ""};
  }
  const DeviceLabel& device = *found->second;
  return {device.label, device.serial, device.id};
}

bool isEmpty(const PortFamily& family) {
  return family.group->first > family.group->last || family.channels.first > family.channels.last;
}

/// Counts what the tree becomes when it is written out, before anything is. A few bytes of ranges,
/// a width or a name shared by many ports would fill any memory or disk.
class Survey {
 public:
  explicit Survey(Budget& nameBytes) : nameBytes_(nameBytes) {}

  void add(const DeviceNames& device, const PortFamily& family) {
    nameBytes_.take(device.label.size() + device.serial.size() + family.type.size());
    if (isEmpty(family)) {
      return;
    }
    const PortTypeGroup& group = *family.group;
    const Range& channels = family.channels;
    const std::uint64_t numbers = lengthOf(group.first, group.last);
    const std::uint64_t channelCount = lengthOf(channels.first, channels.last);
    portBudget_.takeTimes(numbers, channelCount);
    const std::uint64_t suffix =
        family.slot.size() + longestPortText(group.port, group.first, group.last) +
        family.type.size() + longestNumber(channels.first, channels.last) + kSuffixMarks;
    // The port is written twice and looked up under its device's ID.
    nameBytes_.takeTimes(numbers * channelCount, device.label.size() + device.serial.size() +
                                                     device.id.size() + 3 * suffix);
    ports_ += numbers * channelCount;
    ++families_;
    const std::size_t longestDevice =
        std::max({device.label.size(), device.serial.size(), device.id.size()});
    longestName_ = std::max(longestName_, longestDevice + suffix);
  }

  [[nodiscard]] std::size_t ports() const { return static_cast<std::size_t>(ports_); }
  [[nodiscard]] std::size_t families() const { return families_; }

  /// More than any memory has stays more than any memory has.
  [[nodiscard]] std::size_t longestName() const {
    constexpr std::size_t kMax = std::numeric_limits<std::size_t>::max();
    return static_cast<std::size_t>(std::min<std::uint64_t>(longestName_, kMax));
  }

 private:
  static constexpr std::uint64_t kSuffixMarks = 6;  // three points and ".ch"

  Budget& nameBytes_;
  Budget portBudget_{"too many ports", kMaxPorts};
  std::uint64_t ports_ = 0;
  std::size_t families_ = 0;
  std::uint64_t longestName_ = 0;
};

class Expander {
 public:
  Expander(const PortLabelMap& portLabels, Budget& nameBytes, const Survey& survey)
      : portLabels_(portLabels), nameBytes_(nameBytes), key_(survey.longestName()) {
    expanded_.longestName = survey.longestName();
    // Room for all of them at once: the references stay valid while the list fills.
    expanded_.families.reserve(survey.families());
    if (!portLabels.empty()) {
      expanded_.labels.reserve(survey.ports());
    }
  }

  void add(const DeviceNames& device, const PortFamily& family) {
    matrixName_.assign(device.label).append(".").append(family.type);
    MatrixEntry& matrix =
        expanded_.matrices.try_emplace(matrixName_, MatrixEntry{device.serial, {}}).first->second;
    if (!isEmpty(family)) {
      matrix.families.push_back(
          &expanded_.families.emplace_back(ExpandedFamily{device, family, expanded_.ports}));
      count(family);
      checkPorts(device.id, family);
    }
  }

  ExpandedTree take() { return std::move(expanded_); }

 private:
  void count(const PortFamily& family) {
    const auto ports =
        static_cast<std::size_t>(lengthOf(family.group->first, family.group->last) *
                                 lengthOf(family.channels.first, family.channels.last));
    expanded_.ports += ports;
    expanded_.inputs += family.group->direction == Direction::kSource ? ports : 0;
    expanded_.outputs += family.group->direction == Direction::kDestination ? ports : 0;
  }

  /// Spells each port where that can fail or where the port may have a label.
  void checkPorts(std::string_view deviceId, const PortFamily& family) {
    const PortTypeGroup& group = *family.group;
    if (portLabels_.empty() && splitPattern(group.port).kind != PortPattern::Kind::kFormat) {
      return;
    }
    key_.startFamily(deviceId, family);
    forEachNumber({group.first, group.last}, [&](std::int32_t port) {
      key_.startPort(port);
      if (!portLabels_.empty()) {
        addLabels(family.channels);
      }
    });
  }

  void addLabels(const Range& channels) {
    forEachNumber(channels, [&](std::int32_t channel) {
      const std::string_view* const found = portLabels_.find(key_.onChannel(channel));
      const std::string_view label = found == nullptr ? std::string_view() : *found;
      nameBytes_.take(label.size());  // once for every port of that name
      expanded_.labels.push_back(label);
    });
  }

  const PortLabelMap& portLabels_;
  Budget& nameBytes_;
  ExpandedTree expanded_;
  PortName key_;
  std::string matrixName_;
};

/// Calls visit(device, family) for every type of every group in the order of writing.
template <typename Visit>
void forEachFamily(const PortTree& tree, const DeviceIndex& index, Visit visit) {
  for (const auto& [deviceKey, slots] : tree) {
    const DeviceNames device = identify(deviceKey, index);
    for (const auto& [slot, groups] : slots) {
      for (const PortTypeGroup& group : groups) {
        for (const auto& [type, channels] : group.types) {
          visit(device, PortFamily{slot, &group, type, channels});
        }
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
  forEachFamily(tree, index, [&](const auto&... family) { survey.add(family...); });
  Expander expander(portLabels, nameBytes, survey);
  forEachFamily(tree, index, [&](const auto&... family) { expander.add(family...); });
  return expander.take();
}

}  // namespace quenfold::unpacking
