#pragma once

#include "generator/json_text.h"
#include "generator/logical_io.h"
#include "generator/plant.h"

namespace quenfold::generator {

/// "sources.json" or "destinations.json", tabs and lines exactly as unpacking writes them, the
/// "levelKeys" in front of the records being the one addition.
void writeLogicalTable(const Plant& plant, const LogicalTable& table, const TextSink& sink);

}  // namespace quenfold::generator
