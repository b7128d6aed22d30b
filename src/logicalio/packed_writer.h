#pragma once

#include "json/cjson_handle.h"
#include "logicalio/packed_model.h"

namespace quenfold {

/// The "logicalIO" array: each record with its ports as packed numbers, "" for an empty port. Adds
/// them to the fingerprint "port". Throws std::bad_alloc, as all of these do.
CJsonHandle packRecords(PackedModel& model);

/// The document of the "...Ports.json" file around that array.
CJsonHandle portsDocument(const PackedModel& model, CJsonHandle logicalIO);

/// The documents of the "...Labels.json", "...LegacyCategories.json" and ".hash" files.
CJsonHandle labelsDocument(const PackedModel& model);
CJsonHandle categoriesDocument(const PackedModel& model);
CJsonHandle hashDocument(const std::string& topLevelKey, const FingerprintValues& values);

}  // namespace quenfold
