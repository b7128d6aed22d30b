#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "logicalio/keys.h"
#include "logicalio/record.h"

namespace quenfold {

/// The legacy document of the records. Ports are padded with "" to `levelCount`, categories to six;
/// a seventh category is dropped. Throws std::bad_alloc and a length error "too many ports: more
/// than 67108864" before it writes anything.
std::string legacyText(const std::vector<LogicalIORecord>& records, const TableKind& kind,
                       std::size_t levelCount);

}  // namespace quenfold
