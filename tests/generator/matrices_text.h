#pragma once

#include "generator/json_text.h"
#include "generator/plant.h"

namespace quenfold::generator {

/// "matrices.json". Canonical: without any white space, exactly as unpacking writes it. Messy:
/// white space of every kind between the tokens and members that no reader knows.
void writeMatrices(const Plant& plant, const TextSink& sink);

}  // namespace quenfold::generator
