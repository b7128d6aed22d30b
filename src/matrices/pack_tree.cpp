#include "matrices/pack_tree.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

#include "app/text.h"

namespace quenfold::packing {
namespace {

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

const Layout& layoutOf(const PortClass& portClass) { return *portClass.types; }

using PortClasses = IndexedList<PortClass, layoutOf>;

PortClasses classesOf(const PackSlot& slot) {
  PortClasses classes;
  for (const PackPort& port : slot.ports) {
    const auto make = [&port] { return PortClass{&port.types, {}}; };
    classes.findOrAppend(port.types, make).ports.push_back(&port.port);
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

/// The port string up to and including the "." behind its type.
std::string_view upToChannel(std::string_view portText, const SplitPort& parts) {
  const char* const typeEnd = parts.type.data() + parts.type.size();
  return portText.substr(0, static_cast<std::size_t>(typeEnd - portText.data()) + 1);
}

PackSlot& slotOf(DeviceList& devices, const SplitPort& port) {
  PackDevice& device = devices.findOrAppend(port.device, [&] {
    return PackDevice{std::string(port.device), {}};
  });
  return device.slots.findOrAppend(port.slot, [&] {
    return PackSlot{std::string(port.slot), {}, {}};
  });
}

PackPort& portOf(PackSlot& slot, std::string_view portPart) {
  PortString name = parsePortString(portPart);
  return slot.ports.findOrAppend(name, [&] { return PackPort{std::move(name), {}}; });
}

ChannelList& channelsOf(PackPort& port, std::string_view type) {
  return port.types.findOrAppend(type, [&] { return TypeChannels{type, {}}; }).channels;
}

std::string_view bytesOf(const ChannelList& channels) {
  return channels.empty() ? std::string_view()
                          : std::string_view(reinterpret_cast<const char*>(&channels[0]),
                                             channels.size() * sizeof channels[0]);
}

}  // namespace

bool operator==(const Layout& a, const Layout& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const TypeChannels& left, const TypeChannels& right) {
                      return left.type == right.type &&
                             bytesOf(left.channels) == bytesOf(right.channels);
                    });
}

std::uint32_t hashOf(const Layout& layout) {
  std::uint32_t hash = 0;
  for (const TypeChannels& type : layout) {
    hash = hash * 31 + quenfold::hashOf(type.type);
    hash = hash * 31 + quenfold::hashOf(bytesOf(type.channels));
  }
  return hash;
}

void addChannel(ChannelList& channels, const SplitPort& port, std::ostream& notices) {
  if (channels.find(port.ch) == nullptr) {
    channels.append(port.ch);
    return;
  }
  std::string known;
  for (const std::int32_t channel : channels) {
    known.append(fmt::format_int(channel).c_str()) += ',';
  }
  notices << fmt::format("Duplicate channel in {}({}.{}.{}.{}.{}). Channels={}", port.ch,
                         port.device, port.slot, port.port, port.type, port.ch, known);
}

ChannelList& addPort(DeviceList& devices, const SplitPort& port, std::ostream& notices) {
  PackPort& found = portOf(slotOf(devices, port), port.port);
  ChannelList& channels = channelsOf(found, port.type);
  addChannel(channels, port, notices);
  return channels;
}

void addPort(DeviceList& devices, PortCursor& cursor, std::string_view portText,
             std::ostream& notices) {
  if (cursor.channels != nullptr && beginsWith(portText, cursor.front)) {
    cursor.parts.ch = parseChannel(portText.substr(cursor.front.size()));
    addChannel(*cursor.channels, cursor.parts, notices);
    return;
  }
  cursor = {};
  const SplitPort parts = splitPort(portText);
  ChannelList& channels = addPort(devices, parts, notices);
  cursor = {upToChannel(portText, parts), parts, &channels};
}

void consolidate(PackSlot& slot) {
  slot.groups.clear();
  for (const PortClass& portClass : classesOf(slot)) {
    for (const PortRange& range : rangesOf(portClass)) {
      slot.groups.push_back(
          {range.name, range.first, range.last, portClass.types, classifyPortType(range.name)});
    }
  }
}

}  // namespace quenfold::packing
