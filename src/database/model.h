#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/file_set.h"
#include "logicalio/record.h"

namespace quenfold::database {

/// A device as the user names it, and its frame ID.
struct Device {
  std::string_view label;
  std::string_view serial;
};

/// One of the matrices: "<device label>.<type>".
struct Matrix {
  std::string_view name;
  std::string_view serial;
};

struct Port {
  std::string_view name;     // the port string, with the device's label in front
  std::string_view label;    // the user's; empty where the port has none of its own
  std::uint32_t matrix = 0;  // its place in `Model::matrices`
};

/// What a database means, whether it was read from legacy or from packed files, in the order of its
/// files. The views lie in what the model keeps; moving the model does not move it.
struct Model {
  std::vector<Device> devices;
  std::vector<Matrix> matrices;
  std::vector<Port> ports;

  /// The records of each table that is there. Their ports are port keys with the device's label in
  /// front, whether the file has keys or labels, or empty texts.
  std::array<std::optional<std::vector<LogicalIORecord>>, kTableCount> tables;

  std::unique_ptr<std::string> text = std::make_unique<std::string>();
  std::unique_ptr<std::pmr::monotonic_buffer_resource> spelled =
      std::make_unique<std::pmr::monotonic_buffer_resource>();
};

}  // namespace quenfold::database
