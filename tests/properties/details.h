#pragma once

#include <string>
#include <vector>

#include "properties/compared.h"
#include "properties/found_places.h"
#include "properties/meaning.h"

namespace quenfold::properties {

/// A database, what it is packed to, and what comes back.
struct RoundTrip {
  std::string legacy;  // the folders
  std::string packed;
  std::string returned;
  Meaning before;
  Meaning after;
};

/// What a round trip changes beyond the meaning, and what in a database invites mistakes: members,
/// order, ids of matrices, empty ports at the end, lists that are no JSON, serial numbers that
/// devices share, ports that no matrix lists.
std::vector<Difference> detailDifferences(const RoundTrip& trip, const FoundPlaces& findings);

}  // namespace quenfold::properties
