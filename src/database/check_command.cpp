#include "database/check.h"
#include "database/commands.h"
#include "database/held_database.h"

namespace quenfold::database {
namespace {

Findings findingsOf(const Folder& folder, bool allPlaces) {
  if (folder.form == Form::kPacked) {
    const FileTexts texts = readPackedFiles(folder.path);
    return checkPacked(texts, loadPackedDatabase(texts, folder.path), allPlaces);
  }
  const LegacyDatabase legacy = readLegacyDatabase(folder.path);
  return checkLegacy(legacy, packInMemory(legacy), allPlaces);
}

}  // namespace

Report check(const CheckRequest& request) {
  const HeldDatabase held(request.folder);
  const Findings findings = findingsOf(held.folder(), request.allPlaces);
  return {request.json ? findingsJson(findings, held.folder().form) : findingsText(findings),
          anyCounts(findings, request.strict)};
}

}  // namespace quenfold::database
