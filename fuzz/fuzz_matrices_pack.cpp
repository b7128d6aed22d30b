// The input is the text of "matrices.json".

#include <string>

#include "input_files.h"
#include "matrices/pack.h"
#include "target.h"

namespace quenfold::fuzz {
namespace {

void fuzzMatricesPack(std::string_view input) {
  convertMatricesToPacked("matrices.json", std::string(input), workFolder());
}

const Target kMatricesPack("matrices_pack", fuzzMatricesPack);

}  // namespace
}  // namespace quenfold::fuzz
