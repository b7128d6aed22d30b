#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "logicalio/fingerprints.h"
#include "logicalio/port_dict.h"
#include "logicalio/record.h"

namespace quenfold {

/// The ports of a record as the dictionary numbers them; nothing for an empty port.
using NumberedPorts = std::vector<std::optional<PortKeyIds>>;

/// What packing collects from a legacy document and writes to the packed files. The keys are empty
/// when the document gives none.
struct PackedModel {
  std::string topLevelKey;
  std::string outputKey;
  std::vector<std::int32_t> levelKeys;
  std::vector<LogicalIORecord> records;  // without their ports
  std::vector<NumberedPorts> ports;      // record by record
  PortDict portDict;
  Fingerprints fingerprints;
};

}  // namespace quenfold
