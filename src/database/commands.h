#pragma once

#include <string>
#include <vector>

#include "database/findings.h"

// The commands of quenfold-db. Each gives what goes to standard output and prints nothing itself;
// what cannot be done is thrown.

namespace quenfold::database {

struct Report {
  std::string text;
  bool found = false;  // something that counts, or refused for it
};

struct CheckRequest {
  std::string folder;
  bool strict = false;  // notes count
  bool allPlaces = false;
  bool json = false;
};

/// What packing a legacy database would lose or change; whether a packed one is whole. Throws what
/// `folderOf`, `findDatabase`, holding and reading the folder throw.
Report check(const CheckRequest& request);

struct DiffRequest {
  std::string from;
  std::string to;
  bool allPlaces = false;
  bool json = false;
};

/// What differs in meaning. A legacy database is compared with a packed one as packing leaves it.
/// Throws what `check` throws, and "<path>: <place>: <message>" where packing's reading stops.
Report diff(const DiffRequest& request);

struct ShowRequest {
  std::string folder;
  bool json = false;
};

/// What is in a database; a legacy one as packing leaves it. Nothing is ever found. Throws what
/// `diff` throws.
Report show(const ShowRequest& request);

struct ConvertRequest {
  std::string source;
  std::string target;
  std::vector<Kind> accepted;
  bool dryRun = false;
  bool removeStale = false;
};

/// Convert a whole database, all files at one instant. Refuse what loses something that is not
/// accepted, and a target that holds a file of the set that the source has not. Throw what
/// `folderOf`, `findDatabase`, holding, reading and replacing throw, and length errors.
Report pack(const ConvertRequest& request);
Report unpack(const ConvertRequest& request);

}  // namespace quenfold::database
