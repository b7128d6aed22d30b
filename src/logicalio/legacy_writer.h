#pragma once

#include <cstddef>
#include <vector>

#include "json/cjson_handle.h"
#include "logicalio/keys.h"
#include "logicalio/record.h"

namespace quenfold {

/// The array of legacy entries. Ports are padded with "" to `levelCount`, categories to six; a
/// seventh category is dropped. Uses the records up. Throws std::bad_alloc, as does the next, and a
/// length error "too many ports: more than 67108864" before it builds anything.
CJsonHandle legacyEntries(std::vector<LogicalIORecord> records, const TableKind& kind,
                          std::size_t levelCount);

/// The whole legacy document around that array.
CJsonHandle legacyDocument(const TableKind& kind, CJsonHandle entries);

}  // namespace quenfold
