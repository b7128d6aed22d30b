#pragma once

#include "database/findings.h"
#include "database/known_ports.h"
#include "database/legacy_database.h"
#include "database/model.h"
#include "database/packed_database.h"

namespace quenfold::database {

/// The matrices before and after.
struct MatricesContext {
  const LegacyMatrices& legacy;
  const Model& model;            // what `listPorts` makes of them
  const PackedDatabase& packed;  // what they are packed to
};

/// Adds what packing and unpacking lose or change of the matrices, found by doing both. The ports
/// that come back are noted in `ports`, which is empty before. Throws what expanding the tree
/// throws.
void checkMatrices(const MatricesContext& context, KnownPorts& ports, Findings& findings);

/// Adds the devices that packing cannot tell apart.
void checkSerials(const std::vector<Device>& devices, Findings& findings);

}  // namespace quenfold::database
