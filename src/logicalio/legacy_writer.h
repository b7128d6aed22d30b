#pragma once

#include <cjson/cJSON.h>

#include <cstddef>
#include <vector>

#include "logicalio/format.h"
#include "logicalio/record.h"

namespace quenfold {

/// For `buildCJson`: the entries of the legacy table, one a record. Ports are padded with "" to
/// `levelCount`, categories to six; a seventh category is dropped. They refer to the texts of the
/// records, which must outlive the document and stay as they are. Throws std::bad_alloc and a
/// length error "too many ports: more than 67108864" before it builds anything.
cJSON* entriesToJson(const std::vector<LogicalIORecord>& records, const TableKind& kind,
                     std::size_t levelCount);

/// For `buildCJson`: the legacy document of these entries. Throws std::bad_alloc.
cJSON* legacyFileToJson(const TableKind& kind, cJSON* entries);

}  // namespace quenfold
