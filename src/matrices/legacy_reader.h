#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/indexed_list.h"
#include "app/limits.h"
#include "json/document.h"
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

/// How far the reading has come; both count from 0.
struct ReadingPosition {
  std::size_t matrix = 0;
  std::optional<std::size_t> port;  // none while the matrix itself is read
};

/// All that the pack takes from the legacy files, in input order. The labels and details are views
/// into the text that was parsed.
struct MatricesModel {
  MatricesModel() = default;
  explicit MatricesModel(std::ostream& takesNotices) : notices(takesNotices) {}

  std::ostream& notices = std::cerr;  // takes what is wrong but does not end the run
  std::string text;
  DeviceList devices;
  IndexedList<DeviceLabelEntry, &DeviceLabelEntry::label> deviceLabels;
  std::vector<MatrixDetails> details;
  std::deque<PortLabelEntry> portLabels;
  // A frame ID is written into the key of every label of its device.
  Budget replaced{"too many bytes of port label keys", kMaxReplacedBytes};
  ReadingPosition reached;
};

/// The array of all matrices in a parsed "matrices.json". Throws "matrices.json root object is not
/// array." (an object is meant), "matrices.json Config not found.", "matrices.json Config is not
/// object.", "matrices.json Config.Matrices not found." or "matrices.json Config.Matrices is not
/// array.".
const JsonValue& matricesOf(const JsonDocument& root);

/// Reads them into the model, which views the document's text from then on. Throws the message for
/// the first thing that is not as it must be: all before it is in the model then, and `reached`
/// tells where it is.
void readMatrices(const JsonValue& matrices, MatricesModel& model);

/// Reads a file of the base name `inputName`, whose text the model takes over. Only
/// "matrices.json" is read. An error ends the reading and is reported on standard error; what was
/// read before it stays. Throws "portLabels not supported" for "portLabels.json", std::bad_alloc,
/// and a length error "too many bytes of port label keys: more than 1073741824" for the frame IDs
/// in them together.
void readMatrices(const std::string& inputName, std::string inputText, MatricesModel& model);

}  // namespace quenfold::packing
