#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "logicalio/record.h"

namespace quenfold {

/// Names and categories by record id.
using LabelMap = std::map<std::uint32_t, std::string>;
using LegacyCategoryMap = std::map<std::uint32_t, std::vector<CatEntry>>;

/// Load a "...Labels.json" and a "...LegacyCategories.json" file. Of a repeated id the last entry
/// wins. A file that cannot be read or is malformed anywhere gives an empty map and a notice on
/// standard error: names and categories may stand in the records themselves. Throw std::bad_alloc.
LabelMap parseLabelMap(const std::string& path);
LegacyCategoryMap parseLegacyCategoryMap(const std::string& path);

}  // namespace quenfold
