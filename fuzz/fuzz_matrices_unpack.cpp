// The input is three files, see input_files.h: the port tree and the two label files.

#include <string>
#include <vector>

#include "app/files.h"
#include "input_files.h"
#include "matrices/unpack.h"
#include "target.h"

namespace quenfold::fuzz {
namespace {

void fuzzMatricesUnpack(std::string_view input) {
  placeFiles(splitInput(input),
             {"dbpack_matrices.json", "dbpack_deviceLabels.json", "dbpack_portLabels.json"});
  convertPackedMatrices(workFolder(),
                        {"matrices.json", "availableInputs.json", "availableOutputs.json",
                         "portLabels.json", "userPortLabels.json"},
                        joinPath(workFolder(), "out"));
}

const Target kMatricesUnpack("matrices_unpack", fuzzMatricesUnpack);

}  // namespace
}  // namespace quenfold::fuzz
