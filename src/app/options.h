#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quenfold {

/// What one run is to do. An empty directory means that paths are used as they stand.
struct Options {
  std::string sourceDir;
  std::string outputDir;
  std::string function;
  std::vector<std::string> inputFiles;
  std::vector<std::string> outputFiles;
  bool pack = false;
};

/// Reads the command line; the last of a repeated option wins. Sets `verbose` for -v. Empty when
/// the usage text is wanted: -h, an unknown option or a missing argument (which getopt reports on
/// standard error), whatever else was given. Arguments that are not options are ignored.
std::optional<Options> parseOptions(int argc, char** argv);

/// Writes the usage text to standard error.
void printUsage();

}  // namespace quenfold
