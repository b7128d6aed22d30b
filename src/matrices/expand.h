#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "json/label_files.h"
#include "matrices/port_tree.h"

namespace quenfold::unpacking {

/// One port and channel of the legacy files.
struct UnpackedPort {
  std::string name;        // the port string with the device label in front
  std::string serialName;  // the same with the device serial in front
  std::string_view label;  // the user's label, empty when none; lives in the port-label map

  /// What the legacy files call the port: the user's label, or the port string without one.
  [[nodiscard]] std::string_view shownName() const { return label.empty() ? name : label; }
};

using PortReferences = std::vector<const UnpackedPort*>;

struct MatrixEntry {
  std::string serialnumber;
  PortReferences ports;
};

/// The port tree written out, everything in creation order. The references point into `allPorts`.
struct ExpandedTree {
  std::vector<UnpackedPort> allPorts;
  std::map<std::string, MatrixEntry> matrices;  // by matrix name
  PortReferences inputs;
  PortReferences outputs;
};

/// Writes every range out. The label map must outlive the result. Throws the formatter's error for
/// a port pattern with stray braces, and length errors: "port pattern too wide: more than 4096",
/// "too many ports: more than 67108864" and "too many bytes of port names: more than 8589934592",
/// all but the labels' part of the last before anything is written out.
ExpandedTree expandPortTree(const PortTree& tree, const std::vector<DeviceLabel>& deviceLabels,
                            const PortLabelMap& portLabels);

}  // namespace quenfold::unpacking
