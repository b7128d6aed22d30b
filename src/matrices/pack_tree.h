#pragma once

#include <cstdint>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "app/indexed_list.h"
#include "matrices/format.h"
#include "matrices/port_string.h"

/// The pack side's model: ports as they are read, in input order, then merged into groups.
namespace quenfold::packing {

constexpr std::int32_t sameNumber(std::int32_t number) { return number; }

/// Channel numbers without duplicates.
using ChannelList = IndexedList<std::int32_t, sameNumber>;

/// The type's name is a view into the first port string that has it.
struct TypeChannels {
  std::string_view type;
  ChannelList channels;
};

/// The types of one port: its layout.
using Layout = IndexedList<TypeChannels, &TypeChannels::type>;

/// The same types with the same channels, all in the same order.
bool operator==(const Layout& a, const Layout& b);
std::uint32_t hashOf(const Layout& layout);

struct PackPort {
  PortString port;
  Layout types;
};

/// Ports `first` to `last` of one pattern that share a layout. The layout is that of the slot's
/// first such port and lives there.
struct PortTypeGroup {
  std::string port;
  std::int32_t first = 0;
  std::int32_t last = 0;
  const Layout* types = nullptr;
  Direction direction = Direction::kUnknown;
};

struct PackSlot {
  std::string name;
  IndexedList<PackPort, &PackPort::port> ports;
  std::vector<PortTypeGroup> groups;
};

/// Named by the user's device label until the frame ID takes its place.
struct PackDevice {
  std::string name;
  IndexedList<PackSlot, &PackSlot::name> slots;
};

using DeviceList = IndexedList<PackDevice, &PackDevice::name>;

/// Inserts the port at the end of every list in which it is new; the result is the list that has
/// its channel. Its texts must live as long as the tree. Throws what `parsePortString` throws after
/// the port's device and slot were added: they stay.
ChannelList& addPort(DeviceList& devices, const SplitPort& port, std::ostream& notices = std::cerr);

/// Where the last port went, null before the first and after one that was no port. The channels of
/// a port mostly follow each other: their port strings differ in nothing but the channel, and the
/// next one needs neither cutting nor searching. Without it packing takes 21 % more instructions on
/// armhf.
struct PortCursor {
  std::string_view front;  // the last port string up to its channel
  SplitPort parts;
  ChannelList* channels = nullptr;
};

/// Splits the port string and inserts the port; throws what `splitPort` throws as well. Nobody else
/// may insert as long as the cursor is used.
void addPort(DeviceList& devices, PortCursor& cursor, std::string_view portText,
             std::ostream& notices = std::cerr);

/// Appends the port's channel, or notes that it is there already.
void addChannel(ChannelList& channels, const SplitPort& port, std::ostream& notices = std::cerr);

/// Replaces the slot's groups: ports of equal layout form a class, the ports of a class with the
/// same pattern a range; classes and ranges in order of appearance. The ports must stay as they
/// are as long as the groups are used.
void consolidate(PackSlot& slot);

}  // namespace quenfold::packing
