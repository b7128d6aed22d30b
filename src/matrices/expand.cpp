#include "matrices/expand.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

#include "app/limits.h"
#include "matrices/port_printer.h"

namespace quenfold::unpacking {
namespace {

/// How many numbers a range holds, up to 2^32.
std::uint64_t lengthOf(std::int32_t first, std::int32_t last) {
  const std::int64_t length = std::int64_t{last} - first + 1;
  return static_cast<std::uint64_t>(std::max<std::int64_t>(length, 0));
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

bool isEmpty(const PortBlock& block) {
  return block.group->first > block.group->last || block.channels.first > block.channels.last;
}

/// Counts what the tree becomes when it is written out, before anything is. A few bytes of ranges,
/// a width or a name shared by many ports would fill any memory or disk.
class Survey {
 public:
  explicit Survey(Budget& nameBytes) : nameBytes_(nameBytes) {}

  void add(const DeviceNames& device, const PortBlock& block) {
    nameBytes_.take(device.label.size() + device.serial.size() + block.type.size());
    if (isEmpty(block)) {
      return;
    }
    const PortTypeGroup& group = *block.group;
    const Range& channels = block.channels;
    const std::uint64_t numbers = lengthOf(group.first, group.last);
    const std::uint64_t channelCount = lengthOf(channels.first, channels.last);
    portBudget_.takeTimes(numbers, channelCount);
    const std::uint64_t suffix =
        block.slot.size() + longestPortText(group.port, group.first, group.last) +
        block.type.size() + longestNumber(channels.first, channels.last) + kSuffixMarks;
    // The port is written twice and looked up under its device's ID.
    nameBytes_.takeTimes(numbers * channelCount, device.label.size() + device.serial.size() +
                                                     device.id.size() + 3 * suffix);
    ports_ += numbers * channelCount;
    ++blocks_;
    const std::size_t longestDevice =
        std::max({device.label.size(), device.serial.size(), device.id.size()});
    longestName_ = std::max(longestName_, longestDevice + suffix);
  }

  [[nodiscard]] std::size_t ports() const { return static_cast<std::size_t>(ports_); }
  [[nodiscard]] std::size_t blocks() const { return blocks_; }

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
  std::size_t blocks_ = 0;
  std::uint64_t longestName_ = 0;
};

class Expander {
 public:
  Expander(const PortLabelMap& portLabels, Budget& nameBytes, const Survey& survey)
      : portLabels_(portLabels), nameBytes_(nameBytes), key_(survey.longestName()) {
    expanded_.longestName = survey.longestName();
    // Room for all of them at once: the references stay valid while the list fills.
    expanded_.blocks.reserve(survey.blocks());
    if (!portLabels.empty()) {
      expanded_.labels.reserve(survey.ports());
    }
  }

  void add(const DeviceNames& device, const PortBlock& block) {
    matrixName_.assign(device.label).append(".").append(block.type);
    MatrixEntry& matrix =
        expanded_.matrices.try_emplace(matrixName_, MatrixEntry{device.serial, {}}).first->second;
    if (!isEmpty(block)) {
      matrix.blocks.push_back(
          &expanded_.blocks.emplace_back(ExpandedBlock{device, block, expanded_.ports}));
      count(block);
      checkPorts(device.id, block);
    }
  }

  ExpandedTree take() { return std::move(expanded_); }

 private:
  void count(const PortBlock& block) {
    const auto ports =
        static_cast<std::size_t>(lengthOf(block.group->first, block.group->last) *
                                 lengthOf(block.channels.first, block.channels.last));
    expanded_.ports += ports;
    expanded_.inputs += block.group->direction == Direction::kSource ? ports : 0;
    expanded_.outputs += block.group->direction == Direction::kDestination ? ports : 0;
  }

  /// Spells each port where that can fail or where the port may have a label.
  void checkPorts(std::string_view deviceId, const PortBlock& block) {
    const PortTypeGroup& group = *block.group;
    if (portLabels_.empty() && splitPattern(group.port).kind != PortPattern::Kind::kFormat) {
      return;
    }
    key_.startBlock(deviceId, block);
    forEachNumber({group.first, group.last}, [&](std::int32_t port) {
      key_.startPort(port);
      if (!portLabels_.empty()) {
        addLabels(block.channels);
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
  PortPrinter key_;
  std::string matrixName_;
};

/// Calls visit(device, block) for every type of every group in the order of writing.
template <typename Visit>
void forEachBlock(const PortTree& tree, const DeviceIndex& index, Visit visit) {
  for (const auto& [deviceKey, slots] : tree) {
    const DeviceNames device = identify(deviceKey, index);
    for (const auto& [slot, groups] : slots) {
      for (const PortTypeGroup& group : groups) {
        for (const auto& [type, channels] : group.types) {
          visit(device, PortBlock{slot, &group, type, channels});
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
  forEachBlock(tree, index, [&](const auto&... block) { survey.add(block...); });
  Expander expander(portLabels, nameBytes, survey);
  forEachBlock(tree, index, [&](const auto&... block) { expander.add(block...); });
  return expander.take();
}

}  // namespace quenfold::unpacking
