#pragma once

#include <string>
#include <string_view>

#include "generator/plant.h"
#include "generator/random.h"

namespace quenfold::fuzz {

/// Choices that are the input's bytes, one byte each; after its end they go on from its length. The
/// input must outlive them.
generator::Random randomOf(std::string_view input);

/// A canonical plant of up to 200 ports in any number of devices and slots that they suffice for.
generator::Plant drawPlant(generator::Random& random);

std::string matricesTextOf(const generator::Plant& plant);

}  // namespace quenfold::fuzz
