#pragma once

#include <array>

// Every name that the logical IO files share between a reader and a writer, spelled once.

namespace quenfold {

// The members of a record. A fingerprint bears the name of the member that it is taken of.
inline constexpr const char* kNameKey = "name";
inline constexpr const char* kIdKey = "id";
inline constexpr const char* kTallyKey = "tally";
inline constexpr const char* kRedirectKey = "redirect";
inline constexpr const char* kDescriptionKey = "description";
inline constexpr const char* kCategoryKey = "category";
inline constexpr const char* kPortKey = "port";

// The members of a table.
inline constexpr const char* kVersionKey = "version";
inline constexpr const char* kPortDictKey = "portDict";
inline constexpr const char* kLevelKeysKey = "levelKeys";
inline constexpr const char* kHashKey = "hash";
inline constexpr const char* kLogicalIOKey = "logicalIO";
inline constexpr const char* kLabelsKey = "labels";
inline constexpr const char* kLegacyCategoriesKey = "legacyCategories";

/// The version of every logical IO table, packed or legacy.
inline constexpr int kTableVersion = 10;

// What follows the output key in the names of the packed files.
inline constexpr const char* kPortsFile = "Ports.json";
inline constexpr const char* kLabelsFile = "Labels.json";
inline constexpr const char* kLegacyCategoriesFile = "LegacyCategories.json";

// What follows the output key in the one member of the side files.
inline constexpr const char* kLabelsTable = "Labels";
inline constexpr const char* kLegacyCategoriesTable = "LegacyCategories";

/// A legacy table: its top-level key, the keys of its records and of a record's ports, and the key
/// of its packed form.
struct TableKind {
  const char* topLevelKey;
  const char* entriesKey;
  const char* portsKey;
  const char* outputKey;
};

inline constexpr const char* kDestinationsOutput = "logicalDestinations";
inline constexpr const char* kSourcesOutput = "logicalSources";

/// What packing recognises, in the order of trying.
inline constexpr std::array kLegacyTables = {
    TableKind{"logicalDests", "logicalDest", "oid", kDestinationsOutput},
    TableKind{"LogicalDestinations", "LogicalDestination", "oid", kDestinationsOutput},
    TableKind{"LogicalSources", "LogicalSource", "val", kSourcesOutput}};

/// What unpacking recognises, in the order of trying; a packed table differs from its legacy form
/// in the letter case of its key.
inline constexpr std::array kPackedTables = {kLegacyTables[1], kLegacyTables[2]};

}  // namespace quenfold
