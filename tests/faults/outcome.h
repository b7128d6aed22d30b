#pragma once

#include <string>
#include <vector>

#include "faults/conversion.h"

namespace quenfold::faults {

enum class Outcome {
  kMessage,     // status 1, the defined message, nothing lost without need
  kRightBytes,  // status 0 and everything as without the fault
  kNotice,      // status 0, the defined notice, and everything as without that input
  kOther,       // anything else: a defect
};

/// What a fault may lead to.
struct Expectation {
  std::vector<std::string> messages;  // how the last line on standard error may begin; none: never
  bool outputsUntouched = false;      // beside a message every output must be as before
  bool noticeAllowed = false;
  std::string unreadable;  // an output that is a device and cannot be looked at
};

/// `right` is what `rightLeftovers` gave.
Outcome judge(const RunResult& result, const Conversion& conversion,
              const std::vector<Leftovers>& right, const Expectation& expectation);

}  // namespace quenfold::faults
