#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

// Every name and constant of the logical IO files, spelled once.

namespace quenfold {

// The members of a record. A fingerprint bears the name of the member that it is taken of.
inline constexpr const char* kNameKey = "name";
inline constexpr const char* kIdKey = "id";
inline constexpr const char* kTallyKey = "tally";
inline constexpr const char* kRedirectKey = "redirect";
inline constexpr const char* kDescriptionKey = "description";
inline constexpr const char* kCategoryKey = "category";
inline constexpr const char* kPortKey = "port";

// The one member of a record that has always the same value, 0.
inline constexpr const char* kKeyKey = "key";

/// What stands before the id in the name of a record that has none.
inline constexpr std::string_view kDefaultName = "lbl_";

/// The texts of a legacy "category" list.
inline constexpr std::size_t kLegacyCategoryCount = 6;

// The members of a table.
inline constexpr const char* kVersionKey = "version";
inline constexpr const char* kPortDictKey = "portDict";
inline constexpr const char* kLevelKeysKey = "levelKeys";
inline constexpr const char* kHashKey = "hash";
inline constexpr const char* kLogicalIOKey = "logicalIO";
inline constexpr const char* kLabelsKey = "labels";
inline constexpr const char* kLegacyCategoriesKey = "legacyCategories";

/// The version of every logical IO table, packed or legacy.
inline constexpr std::int32_t kTableVersion = 10;

// The members of a "portDict".
inline constexpr const char* kRefMapsKey = "refMaps";
inline constexpr const char* kBitPackingKey = "bitPacking";

/// What stands before the id in the name of a slot in a "portDict" that lists none.
inline constexpr std::string_view kDefaultSlot = "slot";

/// The version of every "portDict".
inline constexpr std::int32_t kPortDictVersion = 2;

/// The fields of a port key, the lowest first, as "refMaps" and "bitPacking" name them.
inline constexpr std::array kPortFieldNames = {"ch",          "type", "port_id",
                                               "port_prefix", "slot", "device"};

// What follows the output key in the names of the packed files.
inline constexpr const char* kPortsFile = "Ports.json";
inline constexpr const char* kLabelsFile = "Labels.json";
inline constexpr const char* kLegacyCategoriesFile = "LegacyCategories.json";

/// What follows the name of a legacy file in that of its fingerprints.
inline constexpr const char* kHashFile = ".hash";

// What the name of a legacy file tells of its table.
inline constexpr std::string_view kSourcesFile = "sources.json";
inline constexpr std::string_view kDestinationsFile = "destinations.json";

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
