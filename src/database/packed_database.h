#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "database/file_set.h"
#include "json/cjson_tree.h"
#include "json/label_files.h"
#include "logicalio/packed_reader.h"
#include "matrices/packed_reader.h"

namespace quenfold::database {

/// A packed table with the files beside it.
struct PackedTable {
  const TableKind* kind = nullptr;
  CJsonDocument document;              // of "...Ports.json"
  const cJSON* contents = nullptr;     // the value of its top-level key
  PackedContext context;               // devices by label, as unpacking has them
  std::size_t levelCount = 0;          // level keys, and so the ports of an unpacked record
};

/// All files of a packed database, loaded as unpacking loads them.
struct PackedDatabase {
  std::vector<DeviceLabel> devices;
  PortLabelMap portLabels;  // by port key with the frame ID in front
  unpacking::PortTree tree;
  std::array<std::optional<PackedTable>, kTableCount> tables;
};

/// Loads the texts of a packed set. Throws what unpacking throws for them, with the name of the
/// file in front.
PackedDatabase loadPackedDatabase(FileTexts texts);

}  // namespace quenfold::database
