#pragma once

#include <cjson/cJSON.h>

#include <string>

#include "logicalio/legacy_reader.h"

namespace quenfold {

/// For `buildCJson`: the "logicalIO" array. Adds every port to the fingerprint "port". Like the
/// document of it, it refers to the texts of the model, which must outlive the document and stay as
/// it is. Throws std::bad_alloc, as all of these do.
cJSON* recordsToJson(PackedModel& model);

/// For `buildCJson`: the "...Ports.json" document with those records.
cJSON* portsFileToJson(const PackedModel& model, cJSON* records);

/// The "...Labels.json" and "...LegacyCategories.json" texts.
std::string labelsText(const PackedModel& model);
std::string categoriesText(const PackedModel& model);

}  // namespace quenfold
