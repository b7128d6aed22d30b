#include "matrices/pack_tree.h"

#include <fmt/format.h>

#include <algorithm>
#include <iostream>
#include <unordered_map>

namespace quenfold::packing {
namespace {

bool sameLayout(const Layout& a, const Layout& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const TypeChannels& left, const TypeChannels& right) {
                      return left.type == right.type &&
                             std::equal(left.channels.begin(), left.channels.end(),
                                        right.channels.begin(), right.channels.end());
                    });
}

struct LayoutHash {
  std::size_t operator()(const Layout* layout) const {
    std::size_t hash = 0;
    const auto mix = [&hash](std::size_t value) { hash = hash * 31 + value; };
    for (const TypeChannels& type : *layout) {
      mix(hashOf(std::string_view(type.type)));
      for (const std::int32_t channel : type.channels) {
        mix(hashOf(channel));
      }
    }
    return hash;
  }
};

struct LayoutEqual {
  bool operator()(const Layout* a, const Layout* b) const { return sameLayout(*a, *b); }
};

/// Ports first to last of one pattern; 0 means not set yet.
struct PortRange {
  std::string name;
  std::int32_t first = 0;
  std::int32_t last = 0;
};

/// The ports of one layout, in slot order.
struct PortClass {
  const Layout* types = nullptr;
  std::vector<const PortString*> ports;
};

std::vector<PortClass> classify(const PackSlot& slot) {
  std::vector<PortClass> classes;
  std::unordered_map<const Layout*, std::size_t, LayoutHash, LayoutEqual> positions;
  for (const PackPort& port : slot.ports) {
    const auto [entry, isNew] = positions.try_emplace(&port.types, classes.size());
    if (isNew) {
      classes.push_back({&port.types, {}});
    }
    classes[entry->second].ports.push_back(&port.port);
  }
  return classes;
}

/// Kept on purpose: 0 counts as not set, so a port 0 is overwritten by the next number, and the
/// end is compared with `first`, so it is the last number above the smallest so far.
void widen(PortRange& range, std::int32_t id) {
  if (range.first == 0 || id < range.first) {
    range.first = id;
  }
  if (range.last == 0 || id > range.first) {
    range.last = id;
  }
}

using RangeList = IndexedList<PortRange, &PortRange::name>;

RangeList rangesOf(const PortClass& portClass) {
  RangeList ranges;
  for (const PortString* const port : portClass.ports) {
    widen(ranges.findOrAppend(port->name, [port] { return PortRange{port->name}; }), port->id);
  }
  return ranges;
}

}  // namespace

void addPort(DeviceList& devices, const SplitPort& port) {
  PackDevice& device = devices.findOrAppend(port.device, [&] {
    return PackDevice{std::string(port.device), {}};
  });
  PackSlot& slot = device.slots.findOrAppend(port.slot, [&] {
    return PackSlot{std::string(port.slot), {}, {}};
  });
  PortString name = parsePortString(port.port);
  PackPort& packPort = slot.ports.findOrAppend(name, [&] { return PackPort{std::move(name), {}}; });
  TypeChannels& type = packPort.types.findOrAppend(port.type, [&] {
    return TypeChannels{std::string(port.type), {}};
  });
  addChannel(type.channels, port);
}

void addChannel(ChannelList& channels, const SplitPort& port) {
  if (channels.find(port.ch) == nullptr) {
    channels.append(port.ch);
    return;
  }
  fmt::memory_buffer known;
  for (const std::int32_t channel : channels) {
    fmt::format_to(std::back_inserter(known), "{},", channel);
  }
  std::cerr << fmt::format("Duplicate channel in {}({}.{}.{}.{}.{}). Channels={}", port.ch,
                           port.device, port.slot, port.port, port.type, port.ch,
                           std::string_view(known.data(), known.size()));
}

void consolidate(PackSlot& slot) {
  slot.groups.clear();
  for (const PortClass& portClass : classify(slot)) {
    for (const PortRange& range : rangesOf(portClass)) {
      slot.groups.push_back(
          {range.name, range.first, range.last, portClass.types, classifyPortType(range.name)});
    }
  }
}

}  // namespace quenfold::packing
