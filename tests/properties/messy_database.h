#pragma once

#include <string>
#include <vector>

#include "generator/random.h"
#include "properties/mess.h"

namespace quenfold::properties {

/// One port entry of "matrices.json".
struct MessyPort {
  std::string name;
  std::string label;  // the name itself where the user gave none
};

struct MessyMatrix {
  std::string name;
  std::string serial;
  std::vector<MessyPort> ports;
};

/// A few small devices with everything that an untidy history could have left.
struct MessyPlant {
  std::vector<MessyMatrix> matrices;
};

MessyPlant makePlant(generator::Random& random, Untidiness& mess);

/// "matrices.json".
std::string matricesText(const MessyPlant& plant, generator::Random& random, Untidiness& mess);

/// "sources.json" or "destinations.json" with ports of the plant.
std::string tableText(const MessyPlant& plant, bool sources, generator::Random& random,
                      Untidiness& mess);

}  // namespace quenfold::properties
