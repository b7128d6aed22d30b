#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "logicalio/hash.h"
#include "logicalio/record.h"

namespace quenfold {

/// The fingerprints of a table while they are fed, by member name.
using Fingerprints = std::map<std::string, VelDB::Hash, std::less<>>;

/// The finished fingerprints, by member name.
using FingerprintValues = std::map<std::string, std::uint32_t>;

/// The fingerprint of that name, created when it is asked for the first time.
VelDB::Hash& fingerprintOf(Fingerprints& fingerprints, std::string_view name);

/// Its value; 0, and nothing created, when there is none.
std::uint32_t fingerprintValue(const Fingerprints& fingerprints, std::string_view name);

FingerprintValues valuesOf(const Fingerprints& fingerprints);

/// Text entries as text, numbers as numbers.
void addCategories(VelDB::Hash& fingerprint, const std::vector<CatEntry>& categories);

/// The fingerprints "name", "id", "description", "tally", "redirect" and "category" of the
/// records; empty descriptions and tallies are left out. A field without any value is 0.
FingerprintValues hashLogicalIO(const std::vector<LogicalIORecord>& records);

/// The ".hash" text of a document with that top-level key. Throws std::bad_alloc.
std::string hashText(const std::string& topLevelKey, const FingerprintValues& values);

}  // namespace quenfold
