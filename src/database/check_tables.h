#pragma once

#include "database/findings.h"
#include "database/known_ports.h"
#include "database/legacy_database.h"
#include "database/model.h"
#include "database/packed_database.h"

namespace quenfold::database {

/// What a legacy table is compared with.
struct TableContext {
  const PackedDatabase& packed;  // what the whole database is packed to
  const Model& model;            // what its matrices list
  const PortLabelMap& portKeys;  // what packing takes a port's label for
  KnownPorts& ports;             // those of the matrices
};

/// Adds what packing and unpacking lose or change of a table, found by doing both. Its reading must
/// not have stopped.
void checkTable(Table table, const LegacyTable& legacy, const TableContext& context,
                Findings& findings);

}  // namespace quenfold::database
