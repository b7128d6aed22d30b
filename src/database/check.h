#pragma once

#include <string>

#include "database/findings.h"
#include "database/folder.h"
#include "database/legacy_database.h"
#include "database/packed_database.h"

namespace quenfold::database {

/// What packing a legacy database would lose or change, found by packing it in memory and comparing
/// what unpacking makes of that. `set` is what `packInMemory` gives for it.
Findings checkLegacy(const LegacyDatabase& legacy, const PackedSet& set, bool allPlaces);

/// Whether a packed set is whole and belongs together.
Findings checkPacked(const FileTexts& texts, const PackedDatabase& database, bool allPlaces);

}  // namespace quenfold::database
