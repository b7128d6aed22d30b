#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "database/findings.h"
#include "generator/random.h"
#include "properties/plain_json.h"

namespace quenfold::properties {

/// The files of a packed set by name.
using PackedFiles = std::map<std::string, PlainJson, std::less<>>;

/// A finding that an edit must lead to.
struct Expected {
  database::Kind kind;
  std::string file;
  std::string placeStart;
};

/// A way of spoiling a set.
struct PackedEdit {
  std::string_view what;
  /// Edits the files at random; those of another set may be taken. Gives the findings that must
  /// name it, none where the set has nothing to edit.
  std::vector<Expected> (*make)(PackedFiles& files, const PackedFiles& others,
                                generator::Random& random);
};

/// Of the files of the matrices, and of the set itself.
std::vector<PackedEdit> setEdits();
/// Of those of the tables.
std::vector<PackedEdit> tableEdits();

/// The value under the only key of a file.
PlainJson& contentsOf(PackedFiles& files, std::string_view file);

/// Of an integer.
void addTo(PlainJson& number, std::int64_t more);

}  // namespace quenfold::properties
