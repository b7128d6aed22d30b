#pragma once

#include <string>

#include "database/commands.h"

namespace quenfold {

/// What one run of quenfold-db is to do.
struct DatabaseOptions {
  enum class Command { kCheck, kPack, kUnpack, kDiff, kShow };

  Command command = Command::kCheck;
  bool quiet = false;
  database::CheckRequest check;
  database::ConvertRequest convert;
  database::DiffRequest diff;
  database::ShowRequest show;
};

/// What a command line asks for.
struct ParsedCommandLine {
  bool run = false;  // whether there is something to do
  int status = 0;    // with which to end otherwise: 0 after help and version, 2 for a wrong one
  DatabaseOptions options;
};

/// Reads the command line. Sets `verbose` for -v. Help and the version go to standard output, what
/// is wrong to standard error. Throws what `writeStandardOutput` throws.
ParsedCommandLine parseDatabaseOptions(int argc, char** argv);

}  // namespace quenfold
