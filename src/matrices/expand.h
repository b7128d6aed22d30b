#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "json/label_files.h"
#include "matrices/packed_reader.h"
#include "matrices/port_printer.h"

namespace quenfold::unpacking {

/// The names of a device.
struct DeviceNames {
  std::string_view label;
  std::string_view serial;
  std::string_view id;
};

/// A block of at least one port, and where it stands among all.
struct ExpandedBlock {
  DeviceNames device;
  PortBlock ports;
  std::size_t firstPort = 0;  // the ports created before it
};

struct MatrixEntry {
  std::string_view serialnumber;
  std::vector<const ExpandedBlock*> blocks;
};

/// The port tree in the order in which its ports are created, which are counted and checked but not
/// spelled yet: they would fill many times the memory of the tree. Refers to the tree and the
/// labels. The references of the matrices point into `blocks`.
struct ExpandedTree {
  std::vector<ExpandedBlock> blocks;
  std::map<std::string, MatrixEntry> matrices;  // by matrix name
  std::vector<std::string_view> labels;         // by port; empty when no port can have one
  std::size_t ports = 0;
  std::size_t inputs = 0;
  std::size_t outputs = 0;
  std::size_t longestName = 0;  // no name or serial name has more bytes

  [[nodiscard]] std::string_view labelOf(std::size_t port) const {
    return labels.empty() ? std::string_view() : labels[port];
  }
};

/// Finds out all that the ports become: no later step can fail for what the tree holds. Everything
/// handed over must outlive the result. Throws the formatter's error for a port pattern with stray
/// braces, and length errors: "port pattern too wide: more than 4096",
/// "too many ports: more than 67108864" and "too many bytes of port names: more than 8589934592",
/// all but the labels' part of the last before any port is looked at.
ExpandedTree expandPortTree(const PortTree& tree, const std::vector<DeviceLabel>& deviceLabels,
                            const PortLabelMap& portLabels);

}  // namespace quenfold::unpacking
