#pragma once

#include "database/findings.h"
#include "database/packed_database.h"

namespace quenfold::database {

/// Adds the stored fingerprints of a table and its side files that are not those of what the files
/// hold. Packing feeds "redirect" of the records alone whose legacy entry had one, and leaves the
/// usual 1 out of its files: that fingerprint is compared where it can be told. Those of members
/// that the packed format does not hold are never.
void checkFingerprints(const PackedTable& table, Findings& findings);

}  // namespace quenfold::database
