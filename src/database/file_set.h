#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "json/format.h"
#include "logicalio/format.h"
#include "matrices/format.h"

// Which files a whole database has, packed and legacy.

namespace quenfold::database {

/// Names to texts of the files of a folder.
using FileTexts = std::map<std::string, std::string, std::less<>>;

/// The sections of the matrices; every packed database has all four.
inline constexpr std::array<const char*, 4> kPackedSections = {
    kMatricesSection, kDeviceLabelsSection, kInternalDetailsSection, kPortLabelsSection};

/// The legacy files of the matrices; packing reads the first.
inline constexpr std::array<std::string_view, 5> kLegacyMatricesFiles = {
    kMatricesFile, kAvailableInputsFile, kAvailableOutputsFile, kPortLabelsFile,
    kUserPortLabelsFile};

/// What follows the output key of a table in the names of its packed files.
inline constexpr std::array<const char*, 3> kPackedTableFiles = {kPortsFile, kLabelsFile,
                                                                 kLegacyCategoriesFile};

/// The tables of a database, each of which may be missing. An enumerator is the table's place in
/// every array by table.
enum Table : std::size_t { kSources, kDestinations };

inline constexpr std::size_t kTableCount = 2;
inline constexpr std::array<Table, kTableCount> kTables = {kSources, kDestinations};

/// The legacy file of a table and the key of its packed ones.
inline constexpr std::array<std::string_view, kTableCount> kTableFiles = {kSourcesFile,
                                                                          kDestinationsFile};
inline constexpr std::array<const char*, kTableCount> kTableOutputs = {kSourcesOutput,
                                                                       kDestinationsOutput};

}  // namespace quenfold::database
