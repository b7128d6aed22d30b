#pragma once

#include <cjson/cJSON.h>

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

/// The same of parsed files, null for a text that is not JSON; what is malformed is thrown: "JSON
/// parse error" and so on.
LabelMap labelMapOf(const cJSON* document);
LegacyCategoryMap legacyCategoryMapOf(const cJSON* document);

}  // namespace quenfold
