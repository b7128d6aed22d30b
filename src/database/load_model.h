#pragma once

#include "database/legacy_database.h"
#include "database/model.h"
#include "database/packed_database.h"

namespace quenfold::database {

/// What a legacy database says, before packing loses any of it. Throws "<path>: <place>: <message>"
/// where packing's reading stops.
Model modelOf(LegacyDatabase legacy);

/// Packs a legacy database in memory and loads that. Throws the same.
PackedDatabase packedFormOf(const LegacyDatabase& legacy);

/// What a packed database says. Throws what expanding the tree throws.
Model modelOf(const PackedDatabase& packed);

}  // namespace quenfold::database
