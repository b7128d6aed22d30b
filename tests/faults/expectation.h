#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "faults/conversion.h"

namespace quenfold::faults {

inline constexpr unsigned long kFromThenOn = 0;

/// What the preloaded library is asked for, see fault_plan.h.
struct Fault {
  std::string_view call;
  unsigned long number = 1;
  unsigned long times = 1;  // or `kFromThenOn`
  int error = 0;
};

/// The fault as the library reads it.
std::string planOf(const Fault& fault);

/// The one thing that a run with a fault may come to. With a message the status is 1, else 0.
struct Expectation {
  std::string message;   // the last line on standard error, whole; empty: no message
  std::string notices;   // the lines of the inputs that the run does without, whole and in order
  unsigned missing = 0;  // a bit for each of those inputs
  std::string brokenOutput;  // where the message leaves off; empty: every output is as before
  std::string device;        // an output that is one and cannot be looked at
};

/// What the fault must lead to that struck the calls on those files, as `RunResult::strikes` names
/// them.
Expectation expectationOf(const Conversion& conversion, const Fault& fault,
                          const std::vector<std::string>& strikes);

/// What a file size limit must lead to, `right` being the run's outputs without one.
Expectation expectationOfLimit(const Conversion& conversion, const Leftovers& right,
                               std::uint64_t limit);

/// The message of a write that fails.
std::string writingFails(std::string_view path);

/// The message of a read that fails.
std::string readingFails(std::string_view path);

}  // namespace quenfold::faults
