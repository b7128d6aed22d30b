#pragma once

#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What a legacy database says, read by nothing that the program uses.

namespace quenfold::properties {

inline constexpr const char* kMatrices = "matrices.json";

/// How a table's file is laid out.
struct TableShape {
  const char* file;
  const char* tableKey;
  const char* entriesKey;
  const char* portsKey;
};
inline constexpr std::array<TableShape, 2> kTableShapes = {{
    {"sources.json", "LogicalSources", "LogicalSource", "val"},
    {"destinations.json", "LogicalDestinations", "LogicalDestination", "oid"},
}};

struct MeantMatrix {
  std::string name;
  std::string serial;
};
inline bool operator==(const MeantMatrix& left, const MeantMatrix& right) {
  return left.name == right.name && left.serial == right.serial;
}

struct MeantPort {
  std::string name;
  std::string label;  // empty for none, or the port's own name
  MeantMatrix matrix;
};

struct MeantRecord {
  std::string id;
  std::vector<std::string> ports;  // as the file spells them, without empty ones at the end
  /// All else by name of the member: texts, and JSON for what is no text; defaults filled in.
  std::map<std::string, std::string> fields;
};

struct Meaning {
  std::vector<MeantMatrix> matrices;
  std::vector<MeantPort> ports;
  std::map<std::string, std::vector<MeantRecord>> tables;  // by file, those that are there

  /// By what a record may name a port: its label or its own name.
  std::map<std::string, std::set<std::string>> portsNamed;

  /// The ports that a text of a record stands for; a text that names none stands for itself.
  [[nodiscard]] std::set<std::string> portsOf(const std::string& text) const;
};

/// Reads the files of a folder. Throws std::runtime_error for what is no JSON.
Meaning readMeaning(const std::string& folder);

}  // namespace quenfold::properties
