#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "database/model.h"

namespace quenfold::database {

/// What happened on the way from one database to the other, in the order of telling it.
enum class DifferenceKind : std::size_t {
  kDeviceAdded,
  kDeviceRemoved,
  kDeviceSerialChanged,
  kMatrixAdded,
  kMatrixRemoved,
  kMatrixSerialChanged,
  kPortAdded,
  kPortRemoved,
  kPortLabelChanged,
  kPortMatrixChanged,
  kTableAdded,
  kTableRemoved,
  kRecordAdded,
  kRecordRemoved,
  kRecordNameChanged,
  kRecordPortChanged,
  kRecordCategoryChanged,
  kRecordTallyChanged,
  kRecordRedirectChanged,
  kRecordDescriptionChanged,
};

/// A kind's name, and what is said of one of its places.
struct DifferenceKindText {
  std::string_view name;
  std::string_view sentence;
  bool ofPorts;  // its places are port strings, which can be told as ranges
};

/// By `DifferenceKind`.
inline constexpr std::array<DifferenceKindText, 20> kDifferenceKinds = {{
    {"device-added", "a device was added", false},
    {"device-removed", "a device was removed", false},
    {"device-serial-changed", "a device has another serial number", false},
    {"matrix-added", "a matrix was added", false},
    {"matrix-removed", "a matrix was removed", false},
    {"matrix-serial-changed", "a matrix has another serial number", false},
    {"port-added", "a port was added", true},
    {"port-removed", "a port was removed", true},
    {"port-label-changed", "a port has another label", true},
    {"port-matrix-changed", "a port is in another matrix", true},
    {"table-added", "the whole table was added", false},
    {"table-removed", "the whole table was removed", false},
    {"record-added", "a record was added", false},
    {"record-removed", "a record was removed", false},
    {"record-name-changed", "a record has another name", false},
    {"record-port-changed", "a record has another port in this position", false},
    {"record-category-changed", "a record has another category in this position", false},
    {"record-tally-changed", "a record has another tally", false},
    {"record-redirect-changed", "a record has another redirect", false},
    {"record-description-changed", "a record has another description", false},
}};

/// One difference. The place is a device's label, a matrix's name, a port string, a table's file,
/// or a record as `<file> <id> "<name>"`, its name being the old one, with ` port <position>` or
/// ` category <position>` counted from 1. `from` and `to` are what changed there; an empty text is
/// nothing, and both are empty where the place itself was added or removed.
struct Difference {
  std::string_view file;  // the legacy file that tells it
  std::string_view place;
  std::string_view from;
  std::string_view to;
};

/// All differences of two models by kind. Refers to the models, which must outlive it.
struct Differences {
  std::array<std::vector<Difference>, kDifferenceKinds.size()> byKind;
  std::unique_ptr<std::pmr::monotonic_buffer_resource> spelled =
      std::make_unique<std::pmr::monotonic_buffer_resource>();

  [[nodiscard]] const std::vector<Difference>& of(DifferenceKind kind) const {
    return byKind.at(static_cast<std::size_t>(kind));
  }
};

/// Whether nothing differs.
bool isEmpty(const Differences& differences);

/// What differs in meaning. Devices are the same by label, matrices and ports by name, records by
/// id; where several have the same one, the first goes with the first and so on. Order is no
/// difference, nor are empty ports and categories behind the last one of a record, nor categories
/// beyond six. The records of a table that only one model has are not told one by one. Takes one
/// look-up for each device, matrix, port and record. Throws std::bad_alloc.
Differences compare(const Model& from, const Model& to);

}  // namespace quenfold::database
