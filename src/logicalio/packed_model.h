#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "logicalio/fingerprints.h"
#include "logicalio/port_dict.h"
#include "logicalio/record.h"

namespace quenfold {

/// What packing collects from a legacy document and writes to the packed files. The keys are empty
/// when the document gives none.
struct PackedModel {
  std::string topLevelKey;
  std::string outputKey;
  std::vector<std::int32_t> levelKeys;
  std::vector<LogicalIORecord> records;
  PortDict portDict;
  Fingerprints fingerprints;
};

}  // namespace quenfold
