#pragma once

#include <cjson/cJSON.h>

#include "json/label_files.h"
#include "logicalio/keys.h"
#include "logicalio/packed_model.h"

namespace quenfold {

/// The kind of a legacy document, whatever the letter case of its top-level key. Throws
/// "Unknown logical IO Type: " with the text of the document's first member, when it has one.
const TableKind& legacyKindOf(const cJSON& document);

/// Adds the table's records to the model, registering their ports and feeding the fingerprints,
/// then computes the widths of the ports. `portKeys` tells the port key of a user's port label.
/// A table without records is reported on standard error. Throws "name is not a string",
/// "name not found", "id not found" or "ports entry not found: <ports key>".
void parseLegacyTable(const cJSON& table, const TableKind& kind, const PortLabelMap& portKeys,
                      PackedModel& model);

}  // namespace quenfold
