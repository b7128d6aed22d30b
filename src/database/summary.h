#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "database/folder.h"
#include "database/packed_database.h"
#include "database/size_table.h"

namespace quenfold::database {

/// A device of the records or of the port tree.
struct DeviceSummary {
  std::string_view id;                        // its key in the tree
  const DeviceLabel* record = nullptr;        // null for one that only the tree has
  const unpacking::SlotMap* slots = nullptr;  // null for one that is not in the tree
  std::size_t ports = 0;
};

struct TableSummary {
  std::string_view file;  // the legacy one
  std::size_t records = 0;
  const PortDict* portDict = nullptr;
};

/// What is in a database. Refers to it.
struct Summary {
  Form form = Form::kPacked;
  std::vector<FileSize> files;
  std::size_t ports = 0;
  std::size_t inputs = 0;
  std::size_t outputs = 0;
  std::size_t portLabels = 0;
  std::vector<DeviceSummary> devices;  // in the order of their records, then those without one
  std::vector<TableSummary> tables;    // those that are there
};

/// All but the form and the files, which the folder tells. Throws what expanding the port tree
/// throws, and std::bad_alloc.
Summary summarise(const PackedDatabase& database);

/// The bits that a packed port takes, of which only the lowest `kPackedBits` are kept.
inline constexpr std::uint64_t kPackedBits = 32;
std::uint64_t packedBits(const PortDict& portDict);

/// The bits of a field; none for a width below 1.
std::uint32_t fieldBits(const PortDict& portDict, std::size_t field);

/// "source", "destination" or "neither".
std::string_view directionName(Direction direction);

/// A pattern of the tree as its file spells it, around the place of the number.
struct PatternParts {
  std::string_view front;
  std::string_view back;
  bool numbered = false;  // false for a pattern without a bracket: all of it is `front`
};
PatternParts partsOf(std::string_view pattern);

/// Of all files together.
std::uint64_t allBytes(const std::vector<FileSize>& files);

}  // namespace quenfold::database
