#pragma once

#include <cjson/cJSON.h>

#include <cstdint>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "json/label_files.h"
#include "logicalio/fingerprints.h"
#include "logicalio/format.h"
#include "logicalio/port_dict.h"
#include "logicalio/record.h"

namespace quenfold {

/// A record with its ports as the dictionary numbers them, nothing for an empty port. As the texts
/// of ID keys they cost packing 20 % of cpu time.
struct PackRecord {
  LogicalIORecord fields;  // without ports
  std::vector<std::optional<PortKeyIds>> ports;
};

/// What packing collects from a legacy document and writes to the packed files. Of a text that is
/// no JSON there is no top-level key, and the output key is guessed from the name of its file.
struct PackedModel {
  PackedModel() = default;
  explicit PackedModel(std::ostream& takesNotices) : notices(takesNotices) {}

  std::ostream& notices = std::cerr;  // takes what is wrong but does not end the run
  std::string topLevelKey;
  std::string outputKey;
  std::vector<std::int32_t> levelKeys;
  std::vector<PackRecord> records;
  PortDict portDict;
  Fingerprints fingerprints;
};

/// The kind of a legacy document, whatever the letter case of its top-level key. Throws
/// "Unknown logical IO Type: " with the text of the document's first member, when it has one.
const TableKind& legacyKindOf(const cJSON& document);

/// Adds the table, its keys and records, to the model, registering their ports and feeding the
/// fingerprints, then computes the widths of the ports. `portKeys` tells the port key of a user's
/// port label. A table without records is noted in the model's notices. Throws "name is not a
/// string", "name not found", "id not found" or "ports entry not found: <ports key>"; the records
/// before that one are in the model then.
void parseLegacyTable(const cJSON& table, const TableKind& kind, const PortLabelMap& portKeys,
                      PackedModel& model);

}  // namespace quenfold
