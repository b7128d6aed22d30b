#pragma once

#include "app/options.h"

namespace quenfold {

/// Carries out the one conversion that the options ask for, reads its input, writes what it hands
/// back and, in verbose mode, reports times and sizes on standard error. Throws a runtime error
/// with the message for the operator.
void run(const Options& options);

}  // namespace quenfold
