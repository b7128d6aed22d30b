// The input is the files of a legacy database, see input_files.h.

#include <algorithm>
#include <string>
#include <vector>

#include "database/check.h"
#include "input_files.h"
#include "json/document.h"
#include "matrices/pack.h"
#include "target.h"

namespace quenfold {
namespace {

/// What is packed in memory is what the conversion writes.
void requireSameMatrices(const database::FileTexts& texts, const std::string& matrices) {
  convertMatricesToPacked("matrices.json", matrices, fuzz::workFolder());
  for (const char* const section : database::kPackedSections) {
    const std::string name = packedFileName(section);
    fuzz::requireEqual(texts.at(name), fuzz::bytesOf(name), "packed as by the conversion");
  }
}

}  // namespace
}  // namespace quenfold

namespace quenfold::fuzz {
namespace {

void fuzzDatabaseLegacy(std::string_view input) {
  const std::vector<InputFile> files = splitInput(input);
  placeFiles(files, {"matrices.json", "sources.json", "destinations.json"});
  const database::LegacyDatabase legacy = database::readLegacyDatabase(workFolder());
  const database::PackedSet set = database::packInMemory(legacy);
  const database::Findings findings = database::checkLegacy(legacy, set, true);
  require(!jsonErrorAt(findingsJson(findings, database::Form::kLegacy)), "findings are JSON");
  std::string matrices = bytesOf("matrices.json");
  matrices.erase(std::remove(matrices.begin(), matrices.end(), '\n'), matrices.end());
  requireSameMatrices(set.texts, matrices);
}

const Target kDatabaseLegacy("database_legacy", fuzzDatabaseLegacy);

}  // namespace
}  // namespace quenfold::fuzz
