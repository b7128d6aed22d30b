#pragma once

#include <cjson/cJSON.h>

#include <cstdint>
#include <iostream>
#include <vector>

#include "json/label_files.h"
#include "logicalio/format.h"
#include "logicalio/port_dict.h"
#include "logicalio/record.h"
#include "logicalio/side_files.h"

namespace quenfold {

/// What the other files tell about the records of a packed table.
struct PackedContext {
  PackedContext() = default;
  explicit PackedContext(std::ostream& takesNotices) : notices(takesNotices) {}

  std::ostream& notices = std::cerr;  // takes the records without a name
  PortDict portDict;
  const PortLabelMap* portLabels = nullptr;  // port key to the user's label; null: ports stay keys
  LabelMap names;
  LegacyCategoryMap categories;
};

struct UnpackedRecords {
  std::vector<LogicalIORecord> records;
  std::uint32_t portFingerprint = 0;  // of the packed numbers
};

/// The kind of a packed document, whatever the letter case of its top-level key. Throws
/// "Unknown logical IO Type".
const TableKind& packedKindOf(const cJSON& document);

/// Throws the message for the first of "version", "hash", "logicalIO" and "portDict" that the table
/// lacks: "Error "version" not found.".
void requirePackedMembers(const cJSON* table);

/// Loads the table's "portDict", which must be there. Throws the text of the error that
/// `PortDict::fromJson` gives.
void loadPortDict(const cJSON* table, PortDict& dict);

/// The records in file order, their ports as port keys or, where the user gave one, as labels. A
/// record without a name is noted in the context's notices and named after its id. Throws
/// "parsePackedLogicalIOTable: logical IO table not found" or "id not found", and a length error
/// "too many bytes of records: more than 1073741824".
UnpackedRecords parsePackedLogicalIOTable(const cJSON* table, const PackedContext& context);

}  // namespace quenfold
