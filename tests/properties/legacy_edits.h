#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "generator/random.h"
#include "properties/meaning.h"
#include "properties/plain_json.h"

namespace quenfold::properties {

/// A legacy database, as its files are and as they are meant.
struct LegacyFiles {
  std::map<std::string, PlainJson> files;
  Meaning meaning;
};

/// A difference as it is told; empty texts for what is none.
struct ToldDifference {
  std::string kind;
  std::string file;
  std::string place;
  std::string from;
  std::string to;
};
inline bool operator==(const ToldDifference& left, const ToldDifference& right) {
  return left.kind == right.kind && left.file == right.file && left.place == right.place &&
         left.from == right.from && left.to == right.to;
}

/// A way of changing what a database means.
struct LegacyEdit {
  std::string_view what;
  bool alone;  // nothing else follows from it
  /// Edits the files at random. Gives the differences from before to after, none where there is
  /// nothing to edit.
  std::vector<ToldDifference> (*make)(LegacyFiles& database, generator::Random& random);
};

std::vector<LegacyEdit> matrixEdits();
std::vector<LegacyEdit> recordEdits();

}  // namespace quenfold::properties
