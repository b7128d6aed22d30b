#pragma once

// What the test driver and the library preloaded into the program agree on.

namespace quenfold::faults {

/// The environment variable that asks for a fault: "<call> <n> <once|on> <error>". The n-th call of
/// that kind after main began fails, and with "on" every later one too. The kinds are "alloc",
/// "open", "read", "write", "close", "stat" and "mkdir". The error is an errno number, or 0 for a
/// read or write of one byte only.
inline constexpr const char* kFaultVariable = "QUENFOLD_FAULT";

/// The descriptor that gets a byte when the fault strikes for the first time.
inline constexpr int kMarkDescriptor = 100;

}  // namespace quenfold::faults
