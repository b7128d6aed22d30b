#pragma once

#include <array>
#include <optional>
#include <string>
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
  CJsonDocument document;           // of "...Ports.json"
  const cJSON* contents = nullptr;  // the value of its top-level key
  CJsonDocument labels;             // of "...Labels.json"; null when it is missing
  CJsonDocument categories;         // of "...LegacyCategories.json"; null when it is missing
  PackedContext context;            // devices by label; ports stay keys
  std::vector<LogicalIORecord> records;
};

/// All files of a packed database, loaded as unpacking loads them. A file that is missing counts as
/// one without content.
struct PackedDatabase {
  std::vector<DeviceLabel> devices;
  PortLabelMap portLabels;    // by port key with the frame ID in front
  PortLabelMap labelsByName;  // by port key with the device's label in front
  unpacking::PortTree tree;
  std::string treePath;  // of the file that the tree comes from
  std::array<std::optional<PackedTable>, kTableCount> tables;
};

/// Loads the texts of a packed set. `folder` is where they were read, or empty for
/// a legacy database that was packed in memory. Throws what
/// unpacking throws for them with the path of the file in front, and
/// "<path>:<line>:<column>: no JSON" for a file that is none.
PackedDatabase loadPackedDatabase(FileTexts texts, const std::string& folder);

}  // namespace quenfold::database
