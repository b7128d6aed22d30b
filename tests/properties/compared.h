#pragma once

#include <string>
#include <vector>

#include "properties/found_places.h"
#include "properties/meaning.h"

namespace quenfold::properties {

/// One thing that a round trip changed.
struct Difference {
  std::string what;    // for whoever reads a failure
  bool named = false;  // whether a finding names it
};

/// All that differs between a database and what packing and unpacking made of it.
std::vector<Difference> differences(const Meaning& before, const Meaning& after,
                                    const FoundPlaces& findings);

}  // namespace quenfold::properties
