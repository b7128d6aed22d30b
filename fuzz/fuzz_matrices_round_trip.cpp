// The input chooses a canonical plant: packing its matrices and unpacking them is the identity.

#include <string>

#include "input_files.h"
#include "matrices/pack.h"
#include "matrices/unpack.h"
#include "random_plant.h"
#include "target.h"

namespace quenfold::fuzz {
namespace {

void fuzzMatricesRoundTrip(std::string_view input) {
  generator::Random random = randomOf(input);
  const std::string legacy = mustSucceed([&] { return matricesTextOf(drawPlant(random)); });
  mustSucceed([&] {
    convertMatricesToPacked("matrices.json", legacy, workFolder());
    return convertPackedMatrices(workFolder(), {"matrices.json"}, workFolder());
  });
  requireEqual(bytesOf("matrices.json"), legacy, "canonical matrices come back");
}

const Target kMatricesRoundTrip("matrices_round_trip", fuzzMatricesRoundTrip);

}  // namespace
}  // namespace quenfold::fuzz
