#pragma once

#include <map>
#include <string_view>

#include "json/writer.h"
#include "matrices/legacy_reader.h"

namespace quenfold::packing {

/// Section name to the text of its file; sorted, which is the order of writing.
using Sections = std::map<std::string_view, JsonBuffer>;

/// The four sections of a consolidated model. Each goes straight from the model to its text, with
/// no document in between, and reports its stage.
Sections buildSections(const MatricesModel& model);

}  // namespace quenfold::packing
