#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "logicalio/packed_model.h"

namespace quenfold {

/// The packed numbers of all ports but the empty ones, record after record. Adds every port to the
/// fingerprint "port". Throws std::bad_alloc, as all of these do.
std::vector<std::uint32_t> packPorts(PackedModel& model);

/// The "...Ports.json" text of the records with those numbers.
std::string portsText(const PackedModel& model, const std::vector<std::uint32_t>& packedPorts);

/// The "...Labels.json", "...LegacyCategories.json" and ".hash" texts.
std::string labelsText(const PackedModel& model);
std::string categoriesText(const PackedModel& model);
std::string hashText(const std::string& topLevelKey, const FingerprintValues& values);

}  // namespace quenfold
