#pragma once

#include "database/findings.h"
#include "database/legacy_database.h"

namespace quenfold::database {

/// Adds the members of "matrices.json" that packing does not look at: those that the packed format
/// does not hold, and those of a name that stands twice in an object. Positions count from 1.
void checkMembers(const LegacyMatrices& legacy, Findings& findings);

}  // namespace quenfold::database
