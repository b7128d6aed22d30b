#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quenfold::faults {

/// Where a run's standard output goes.
enum class StandardOutput { kCaptured, kClosed, kFullDisk, kPipeWithoutReader };

/// One run of the program in the current folder.
struct RunPlan {
  std::string program;
  std::vector<std::string> arguments;
  std::string standardInput = "/dev/null";  // a path; closed when empty
  std::string shim;                         // the library to preload; none when empty
  std::string fault;                        // what it is asked for, see fault_plan.h
  StandardOutput standardOutput = StandardOutput::kCaptured;
  std::optional<std::uint64_t> fileSizeLimit;  // bytes
};

struct RunResult {
  std::optional<int> status;  // empty when a signal ended the run
  int signal = 0;             // SIGALRM for a run that did not end by itself
  // The file of each call that failed, as `kMarkDescriptor` is told; paths below the current folder
  // without it.
  std::vector<std::string> strikes;
  std::string out;
  std::string err;
};

/// Throws a system error when the run cannot be started.
RunResult runProgram(const RunPlan& plan);

}  // namespace quenfold::faults
