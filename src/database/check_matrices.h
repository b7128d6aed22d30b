#pragma once

#include "database/findings.h"
#include "database/known_ports.h"
#include "database/legacy_database.h"
#include "database/model.h"
#include "database/packed_database.h"

namespace quenfold::database {

/// Adds what packing and unpacking lose or change of the matrices, found by doing both. `legacy` is
/// listed in `model`; the ports that come back are noted in `ports`, which is empty before. Throws
/// what expanding the tree throws.
void checkMatrices(const LegacyMatrices& legacy, const Model& model, const PackedDatabase& packed,
                   KnownPorts& ports, Findings& findings);

/// Adds the devices that packing cannot tell apart.
void checkSerials(const std::vector<Device>& devices, Findings& findings);

}  // namespace quenfold::database
