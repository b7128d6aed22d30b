#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "app/indexed_list.h"
#include "app/limits.h"
#include "matrices/pack_tree.h"

namespace quenfold::packing {

/// The user's name of a device and its frame ID. Of two matrices with the same label the first
/// counts.
struct DeviceLabelEntry {
  std::string_view label;
  std::string_view serial;
};

struct MatrixDetails {
  std::string_view name;
  std::int32_t id = 0;
  std::int32_t type = 0;
};

/// The user's label of a port; the key is the port string with the frame ID as its device, in two
/// pieces.
struct PortLabelEntry {
  std::string_view serial;
  std::string_view portFromDot;
  std::string_view label;
};

/// All that the pack takes from the legacy files, in input order. The labels and details are views
/// into the text.
struct MatricesModel {
  std::string text;
  DeviceList devices;
  IndexedList<DeviceLabelEntry, &DeviceLabelEntry::label> deviceLabels;
  std::vector<MatrixDetails> details;
  std::deque<PortLabelEntry> portLabels;
  // A frame ID is written into the key of every label of its device.
  Budget replaced{"too many bytes of port label keys", kMaxReplacedBytes};
};

/// Reads a file of the base name `inputName`, whose text the model takes over. Only
/// "matrices.json" is read. An error ends the reading and is reported on standard error; what was
/// read before it stays. Throws "portLabels not supported" for "portLabels.json", std::bad_alloc,
/// and a length error "too many bytes of port label keys: more than 1073741824" for the frame IDs
/// in them together.
void readMatrices(const std::string& inputName, std::string inputText, MatricesModel& model);

}  // namespace quenfold::packing
