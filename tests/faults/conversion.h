#pragma once

#include <map>
#include <string>
#include <vector>

#include "faults/program_run.h"

namespace quenfold::faults {

/// An input whose lack does not end the run.
struct OptionalInput {
  std::string path;
  std::string notice;  // the lines on standard error, with {} in place of what is wrong with it
};

/// One of the program's conversions on a database, in a folder with the legacy files in "in" and
/// the packed ones in "packed".
struct Conversion {
  std::string name;
  std::vector<std::string> arguments;
  std::vector<std::string> outputs;  // paths in the order of writing
  std::vector<OptionalInput> optionalInputs;
  std::string standardInput = "/dev/null";
  bool writesStandardOutput = false;
  bool createsFolder = false;  // the outputs' folder does not exist before the run
};

const std::vector<Conversion>& conversions();

/// What a run leaves behind: output path to bytes, no entry for a missing file; standard output
/// under the empty path.
using Leftovers = std::map<std::string, std::string>;

/// What every output holds before a run.
inline constexpr const char* kOldContent = "what the operator had before";

/// Puts the old content into every output, or removes the folder that the run is to create.
void resetOutputs(const Conversion& conversion);

Leftovers leftoversOf(const Conversion& conversion, const RunResult& result);

/// The outputs as `resetOutputs` left them, with nothing printed.
Leftovers untouched(const Conversion& conversion);

/// What the run is right to leave behind when those optional inputs are missing whose bit is set in
/// the index: the results of fault-free runs. Throws a runtime error when one fails.
std::vector<Leftovers> rightLeftovers(const Conversion& conversion, const RunPlan& plan);

}  // namespace quenfold::faults
