// The input is the files of a packed database, see input_files.h.

#include <string>
#include <vector>

#include "database/check.h"
#include "database/load_model.h"
#include "input_files.h"
#include "json/document.h"
#include "target.h"

namespace quenfold::fuzz {
namespace {

void fuzzDatabasePacked(std::string_view input) {
  const std::vector<std::string> names = database::fileNames(database::Form::kPacked);
  placeFiles(splitInput(input), {names.begin(), names.end()});
  const database::FileTexts texts = database::readPackedFiles(workFolder());
  const database::PackedDatabase packed = database::loadPackedDatabase(texts, workFolder());
  const database::Findings findings = database::checkPacked(texts, packed, true);
  require(!jsonErrorAt(findingsJson(findings, database::Form::kPacked)), "findings are JSON");
  const database::Model model = database::modelOf(packed);
  require(model.devices.size() == packed.devices.size(), "all devices are in the model");
}

const Target kDatabasePacked("database_packed", fuzzDatabasePacked);

}  // namespace
}  // namespace quenfold::fuzz
