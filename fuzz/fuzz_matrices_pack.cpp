// The input is the text of "matrices.json".

#include <string>

#include "input_files.h"
#include "matrices/pack.h"
#include "target.h"

void quenfold::fuzz::fuzzOne(std::string_view input) {
  convertMatricesToPacked("matrices.json", std::string(input), workFolder());
}
