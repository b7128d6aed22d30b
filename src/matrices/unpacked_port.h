#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "matrices/expand.h"
#include "matrices/port_printer.h"

namespace quenfold::unpacking {

/// One port and channel of the legacy files, while it is looked at.
struct UnpackedPort {
  std::string_view name;    // the port string with the device label in front
  std::string_view suffix;  // the port string from behind its device, including the "."
  std::string_view serial;  // the device's; with the suffix it is the port's serial name
  std::string_view label;   // the user's label, empty when none

  /// What the legacy files call the port: the user's label, or the port string without one.
  [[nodiscard]] std::string_view shownName() const { return label.empty() ? name : label; }
};

/// Calls visit(name) for the ports of a block, one after the other, each with that text in front.
/// The printer must have been made for `longestName` bytes of the expanded tree. The name is valid
/// during the call.
template <typename Visit>
void forEachName(std::string_view device, const PortBlock& block, PortPrinter& printer,
                 Visit visit) {
  printer.startBlock(device, block);
  forEachNumber({block.group->first, block.group->last}, [&](std::int32_t port) {
    printer.startPort(port);
    forEachNumber(block.channels, [&](std::int32_t channel) { visit(printer.onChannel(channel)); });
  });
}

/// The same with all that the legacy files tell of a port: visit(port).
template <typename Visit>
void forEachPort(const ExpandedTree& expanded, const ExpandedBlock& block, PortPrinter& printer,
                 Visit visit) {
  std::size_t position = block.firstPort;
  forEachName(block.device.label, block.ports, printer, [&](std::string_view name) {
    visit(UnpackedPort{name, name.substr(block.device.label.size()), block.device.serial,
                       expanded.labelOf(position)});
    ++position;
  });
}

}  // namespace quenfold::unpacking
