#pragma once

#include <cjson/cJSON.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "app/stage_timer.h"
#include "logicalio/fingerprints.h"
#include "logicalio/format.h"
#include "logicalio/packed_reader.h"
#include "logicalio/record.h"

namespace quenfold {

/// What is left to write of a packed document once its tree is gone.
struct UnpackedTable {
  const TableKind* kind = nullptr;
  std::size_t levelCount = 0;
  std::vector<LogicalIORecord> records;
  FingerprintValues fingerprints;
};

/// The value of a packed document's top-level key, with the context that the files beside it give.
/// Throws what `parsePackedLogicalIOTable` throws. Reports its stages.
UnpackedTable unpackTable(const TableKind& kind, const cJSON& table, const PackedContext& context,
                          TimePoint& stageStart);

/// The legacy text and the fingerprint text. Reports its stages. Throws what `entriesToJson`
/// throws.
std::pair<std::string, std::string> printUnpacked(const UnpackedTable& table,
                                                  TimePoint& stageStart);

/// Rebuilds a legacy logical IO document from the packed files `stem` + "Ports.json",
/// "Labels.json" and "LegacyCategories.json" and the label files, all in `directory`. Returns the
/// legacy text and the fingerprint text; writes no file. Throws a runtime error on bad input.
std::pair<std::string, std::string> convertPackedToVelmora(const std::string& stem,
                                                           const std::string& directory);

}  // namespace quenfold
