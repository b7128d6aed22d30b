#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "database/file_set.h"
#include "database/model.h"
#include "json/cjson_tree.h"
#include "json/document.h"
#include "json/label_files.h"
#include "logicalio/format.h"

namespace quenfold::database {

/// A parsed "matrices.json". The document's strings lie in the text.
struct LegacyMatrices {
  std::unique_ptr<std::string> text;
  JsonDocument root;
  const JsonValue* matrices = nullptr;  // the array of all matrices
};

/// A parsed "sources.json" or "destinations.json".
struct LegacyTable {
  const TableKind* kind = nullptr;
  CJsonDocument document;
  const cJSON* contents = nullptr;  // the value of its top-level key
  bool hasZeroBytes = false;        // some text of it goes on behind a zero byte and is cut there
};

/// The files that packing a whole database reads.
struct LegacyDatabase {
  std::string folder;  // where they were read
  LegacyMatrices matrices;
  std::array<std::optional<LegacyTable>, kTableCount> tables;
};

/// Reads the folder's "matrices.json", which must be there, and the tables that are. Throws what
/// `readFile` throws, "<path>:<line>:<column>: no JSON", and "<path>: <message>" for a document
/// that is of another kind; std::bad_alloc and length errors.
LegacyDatabase readLegacyDatabase(const std::string& folder);

/// Where packing stops reading, so that nothing after it is packed.
struct ReadingStop {
  std::string file;
  std::string place;  // its path in the document, counted from 0
  std::string message;
};

/// A legacy database packed in memory.
struct PackedSet {
  FileTexts texts;                 // a table whose reading stops has none
  std::vector<ReadingStop> stops;  // in the order of the files
  std::vector<Device> devices;     // in order of appearance, each label once; views of the input
  PortLabelMap portKeys;           // what packing takes a port's label for
};

/// Packs all files in memory by the same conversions as `quenfold`. Throws length errors for what
/// is beyond their limits.
PackedSet packInMemory(const LegacyDatabase& legacy);

}  // namespace quenfold::database
