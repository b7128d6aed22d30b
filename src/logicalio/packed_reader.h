#pragma once

#include <cjson/cJSON.h>

#include <cstdint>
#include <vector>

#include "json/label_files.h"
#include "logicalio/format.h"
#include "logicalio/port_dict.h"
#include "logicalio/record.h"
#include "logicalio/side_files.h"

namespace quenfold {

/// What the other files tell about the records of a packed table.
struct PackedContext {
  PortDict portDict;
  PortLabelMap portLabels;  // port key to the user's label
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

/// The records in file order, their ports as port keys or, where the user gave one, as labels. A
/// record without a name is reported on standard error and named after its id. Throws
/// "parsePackedLogicalIOTable: logical IO table not found" or "id not found", and a length error
/// "too many bytes of records: more than 1073741824".
UnpackedRecords parsePackedLogicalIOTable(const cJSON* table, const PackedContext& context);

}  // namespace quenfold
