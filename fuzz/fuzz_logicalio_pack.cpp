// The input is three files, see input_files.h: "sources.json" or "destinations.json" (the first
// that is there counts, and none is an empty text) and the two label files.

#include <string>

#include "app/files.h"
#include "input_files.h"
#include "logicalio/pack.h"
#include "target.h"

namespace quenfold::fuzz {
namespace {

void fuzzLogicalioPack(std::string_view input) {
  const std::vector<InputFile> files = splitInput(input);
  placeFiles(files, {"dbpack_deviceLabels.json", "dbpack_portLabels.json"});
  const InputFile* table = findFile(files, "sources.json");
  table = table == nullptr ? findFile(files, "destinations.json") : table;
  const InputFile chosen = table == nullptr ? InputFile{"table.json", {}} : *table;
  convertVelmoraToPacked(workFolder(), joinPath(workFolder(), chosen.name),
                         std::string(chosen.text), workFolder());
}

const Target kLogicalioPack("logicalio_pack", fuzzLogicalioPack);

}  // namespace
}  // namespace quenfold::fuzz
