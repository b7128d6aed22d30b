#pragma once

// What the test driver and the library preloaded into the program agree on.

namespace quenfold::faults {

/// The environment variable that asks for a fault: "<call> <n> <times> <error>". From the n-th call
/// of that kind after main began so many in a row fail, or with "on" all. The kinds are "alloc",
/// "growth" (an allocation of `kGrowthBytes` or more), the system calls "open", "read", "write",
/// "close", "stat", "mkdir", "flock", "sync", "chmod", "chown", "rename", "unlink", "rmdir" and
/// "list" (a folder), "any" for each of these, and "change" for each but "read", "stat" and "list".
/// The error is an errno number, 0 to kill the program before the call, or -N for a read or write
/// of at most N bytes.
inline constexpr const char* kFaultVariable = "QUENFOLD_FAULT";

/// In place of a fault: no call fails, and each one of the kind "change" is told as a fault is, all
/// of them, in lines "<path>\t<kind>", for a rename "<path>\trename\t<name>".
inline constexpr const char* kTrace = "trace 0 0 0";

/// As much as an index asks for when it grows for the first time, and a list of some dozen items; a
/// record or a text is smaller.
inline constexpr unsigned long kGrowthBytes = 1024;

/// The descriptor that is told each time the fault strikes: a line with the path of the file, as it
/// is opened or else from the root, "standard input" or "standard output"; empty for an allocation.
inline constexpr int kMarkDescriptor = 100;

/// Not told beyond that: a run that breaks off is done by then.
inline constexpr int kMostMarks = 16;

}  // namespace quenfold::faults
