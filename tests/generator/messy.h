#pragma once

#include "generator/plant.h"
#include "generator/random.h"

namespace quenfold::generator {

/// Turns a canonical plant into one that an untidy history could have left; no entry is lost and
/// every port stays readable. Entries: numbers of 0 and below, channels that skip, duplicates in
/// the place of others, labels used twice, ports of foreign devices; in descending, jumbled or
/// plain order. Matrices: jumbled, with arbitrary ids, "type" members, a second "." in the name, a
/// serial number of another device, and one without any.
void makeMessy(Plant& plant, Random& random);

}  // namespace quenfold::generator
