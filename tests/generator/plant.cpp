#include "generator/plant.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "generator/messy.h"
#include "generator/port_tables.h"
#include "generator/slot.h"

namespace quenfold::generator {
namespace {

constexpr std::uint32_t kUsualDevicePorts = 4000;
constexpr std::uint32_t kUsualSlotPorts = 300;
constexpr std::uint32_t kUsualMaxSlots = 14;

constexpr std::array<std::string_view, 8> kDeviceStems{"Studio",  "OB-Van", "MCR",  "Régie",
                                                       "Gallery", "Stage_", "Edit", "Truck"};

constexpr std::array<std::string_view, 10> kLabelStems{
    "Cam", "Régie", "Mic", "Présentateur", "VTR", "Line", "Talkback", "Clean Feed", "Wand", "東京"};

constexpr std::array<std::string_view, 4> kOddLabelStems{"Monitor \"A\"", "Key\\Fill", "Tab\there",
                                                         "A/B"};

struct Shape {
  std::uint32_t devices = 0;
  std::uint32_t slots = 0;
};

Shape shapeOf(const PlantParameters& wanted) {
  Shape shape{wanted.devices, wanted.slots};
  if (shape.devices == 0) {
    const std::uint32_t fewest = std::clamp(wanted.ports / 5U, 1U, 3U);
    shape.devices = std::max(wanted.ports / kUsualDevicePorts, fewest);
  }
  if (shape.slots == 0) {
    const std::uint32_t perDevice = wanted.ports / shape.devices;
    shape.slots = std::clamp(perDevice / 2, 1U, 4U);
    shape.slots = std::clamp(perDevice / kUsualSlotPorts, shape.slots, kUsualMaxSlots);
  }
  if (std::uint64_t{shape.devices} * shape.slots > wanted.ports) {
    throw std::invalid_argument("there must be a port for every slot");
  }
  return shape;
}

/// Deals the ports out to the slots, unevenly and to the last one.
class Dealer {
 public:
  Dealer(std::uint32_t ports, const Shape& shape)
      : ports_(ports), slots_(shape.devices * shape.slots) {}

  std::uint32_t next(Random& random) {
    const std::uint32_t mean = ports_ / slots_;
    const std::uint32_t drawn = mean / 2 + random.below(mean + 1);
    --slots_;
    const std::uint32_t dealt = slots_ == 0 ? ports_ : std::clamp(drawn, 1U, ports_ - slots_);
    ports_ -= dealt;
    return dealt;
  }

 private:
  std::uint32_t ports_;
  std::uint32_t slots_;
};

struct Slot {
  std::uint32_t number = 0;
  std::vector<PortGroup> groups;
};

/// In byte order of the names: "slot10" comes before "slot2".
std::vector<Slot> buildSlots(std::uint32_t count, Dealer& dealer, Random& random) {
  std::vector<Slot> slots;
  std::uint32_t number = 0;
  for (std::uint32_t built = 0; built < count; ++built) {
    number += random.percent(20) ? 2U : 1U;
    slots.push_back({number, buildSlot(dealer.next(random), random)});
  }
  std::sort(slots.begin(), slots.end(), [](const Slot& left, const Slot& right) {
    return std::to_string(left.number) < std::to_string(right.number);
  });
  return slots;
}

/// The serial numbers, unlike the labels, do not ascend: the step is prime and skips about.
Device makeDevice(std::uint32_t index, Random& random) {
  const std::string_view stem = kDeviceStems[random.below(kDeviceStems.size())];
  const std::uint64_t serial = 100000 + (std::uint64_t{index} * 7919 + 237) % 900000;
  return {fmt::format("{}{}", stem, index + 1), fmt::format("VM-{}", serial)};
}

/// The number at the end makes every label unique.
std::uint32_t addLabel(Plant& plant, Random& random) {
  const auto index = static_cast<std::uint32_t>(plant.labels.size());
  const std::string_view stem = random.percent(1)
                                    ? kOddLabelStems[random.below(kOddLabelStems.size())]
                                    : kLabelStems[random.below(kLabelStems.size())];
  plant.labels.push_back(fmt::format("{} {}", stem, index));
  return index;
}

/// All channels of one port before those of the next one.
void addGroup(Plant& plant, PortEntry entry, const PortGroup& group, Random& random) {
  entry.prefix = group.prefix;
  for (const TypeChannels& channels : group.layout) {
    entry.type = channels.type;
    std::vector<PortEntry>& ports = (plant.matrices.end() - kPortTypes.size() + entry.type)->ports;
    for (entry.number = group.first; entry.number <= group.last; ++entry.number) {
      for (entry.channel = channels.first; entry.channel <= channels.last; ++entry.channel) {
        entry.label = random.percent(20) ? addLabel(plant, random) : 0;
        ports.push_back(entry);
      }
    }
  }
}

/// A matrix for every type that occurs.
void addDevice(Plant& plant, const std::vector<Slot>& slots, Random& random) {
  PortEntry entry;
  entry.device = static_cast<std::uint32_t>(plant.devices.size());
  const Device& device = plant.devices.emplace_back(makeDevice(entry.device, random));
  for (const PortType& type : kPortTypes) {
    plant.matrices.push_back(
        {fmt::format("{}.{}", device.label, type.name), device.serial, 0, {}, {}});
  }
  for (const Slot& slot : slots) {
    entry.slot = slot.number;
    for (const PortGroup& group : slot.groups) {
      addGroup(plant, entry, group, random);
    }
  }
  const auto own = plant.matrices.end() - kPortTypes.size();
  const auto isEmpty = [](const Matrix& matrix) { return matrix.ports.empty(); };
  plant.matrices.erase(std::remove_if(own, plant.matrices.end(), isEmpty), plant.matrices.end());
}

void putInOrder(std::vector<Matrix>& matrices) {
  std::sort(matrices.begin(), matrices.end(),
            [](const Matrix& left, const Matrix& right) { return left.name < right.name; });
  std::int32_t id = 0;
  for (Matrix& matrix : matrices) {
    matrix.id = id++;
  }
}

}  // namespace

Plant buildPlant(const PlantParameters& parameters, Random& random) {
  const Shape shape = shapeOf(parameters);
  Dealer dealer(parameters.ports, shape);
  Plant plant;
  for (std::uint32_t built = 0; built < shape.devices; ++built) {
    addDevice(plant, buildSlots(shape.slots, dealer, random), random);
  }
  putInOrder(plant.matrices);
  if (parameters.messy) {
    makeMessy(plant, random);
  }
  return plant;
}

void appendPortKey(std::string& out, const Plant& plant, const PortEntry& entry) {
  const PortPrefix& prefix = kPortPrefixes[entry.prefix];
  out += fmt::format("{}.slot{}.{}{}{}.{}.ch{}", plant.devices[entry.device].label, entry.slot,
                     prefix.open, entry.number, prefix.close, kPortTypes[entry.type].name,
                     entry.channel);
}

}  // namespace quenfold::generator
