#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "json/document.h"

/// What "matrices.json" holds, as it stands there and unchecked: of every member that counts the
/// first of its name. A value that was found is never JSON's null: null stands for a member that is
/// not there, and a null of the file for any other kind.
namespace quenfold::packing {

struct LegacyPort {
  JsonValue port;
  JsonValue label;
};

struct LegacyMatrix {
  bool isObject = false;
  JsonValue name;
  JsonValue serial;
  JsonValue id;
  JsonValue type;
  JsonValue ports;  // its kind only
  std::size_t portCount = 0;
  bool portsEndEarly = false;  // after them comes an entry that is no object
};

struct LegacyMatrices {
  JsonValue root;                  // its kind only, as of the next two
  JsonValue config;                // the root's "Config"
  JsonValue matrices;              // its "Matrices"
  std::vector<LegacyMatrix> list;  // ends at an element that is no object
  std::deque<LegacyPort> ports;    // of all matrices, in their order
};

/// Parses in place: the strings live in `text`. A text that is not JSON gives nothing at all.
/// Nesting is bounded by memory, not by the stack. Throws std::bad_alloc.
LegacyMatrices parseLegacyMatrices(std::string& text);

}  // namespace quenfold::packing
