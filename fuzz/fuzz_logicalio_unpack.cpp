// The input is five files, see input_files.h: the packed ports, names and categories, and the two
// label files.

#include "input_files.h"
#include "json/cjson_tree.h"
#include "logicalio/unpack.h"
#include "target.h"

namespace quenfold::fuzz {
namespace {

void fuzzLogicalioUnpack(std::string_view input) {
  placeFiles(splitInput(input), {"Ports.json", "Labels.json", "LegacyCategories.json",
                                 "dbpack_deviceLabels.json", "dbpack_portLabels.json"});
  const auto [legacy, fingerprints] = convertPackedToVelmora("", workFolder());
  require(parseCJson(legacy) != nullptr, "the legacy text is JSON");
  require(parseCJson(fingerprints) != nullptr, "the fingerprint text is JSON");
}

const Target kLogicalioUnpack("logicalio_unpack", fuzzLogicalioUnpack);

}  // namespace
}  // namespace quenfold::fuzz
