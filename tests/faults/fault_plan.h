#pragma once

// What the test driver and the library preloaded into the program agree on.

namespace quenfold::faults {

/// The environment variable that asks for a fault: "<call> <n> <times> <error>". From the n-th call
/// of that kind after main began so many in a row fail, or with "on" all. The kinds are "alloc",
/// "growth" (an allocation of `kGrowthBytes` or more), "open", "read", "write", "close", "stat" and
/// "mkdir". The error is an errno number, or -N for a read or write of at most N bytes.
inline constexpr const char* kFaultVariable = "QUENFOLD_FAULT";

/// As much as an index asks for when it grows for the first time, and a list of some dozen items; a
/// record or a text is smaller.
inline constexpr unsigned long kGrowthBytes = 1024;

/// The descriptor that is told each time the fault strikes: a line with the path of the file, as it
/// is opened or else from the root, "standard input" or "standard output"; empty for an allocation.
inline constexpr int kMarkDescriptor = 100;

/// Not told beyond that: a run that breaks off is done by then.
inline constexpr int kMostMarks = 16;

}  // namespace quenfold::faults
