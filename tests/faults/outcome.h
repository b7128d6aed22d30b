#pragma once

#include <vector>

#include "faults/conversion.h"
#include "faults/expectation.h"

namespace quenfold::faults {

enum class Outcome {
  kMessage,     // status 1, the whole message, nothing lost without need
  kRightBytes,  // status 0 and everything as without the fault
  kNotice,      // status 0, the whole notice, and everything as without that input
  kOther,       // anything but what was expected: a defect
};

/// `right` is what `rightLeftovers` gave.
Outcome judge(const RunResult& result, const Conversion& conversion,
              const std::vector<Leftovers>& right, const Expectation& expected);

}  // namespace quenfold::faults
