#pragma once

#include <cstddef>

// Inside the library preloaded into the program: which of its calls fails. Nothing here allocates.

namespace quenfold::faults {

/// Reads the plan of `kFaultVariable` and counts calls from now on.
void arm();

/// From now on no call fails.
void disarm();

/// Whether this call on that file is to fail; its path is then marked, and errno set.
bool strikes(const char* call, const char* path);
bool strikes(const char* call, int descriptor);

/// The same for a path that is seen from a folder. `to` is the new name in a rename.
bool strikesAt(const char* call, int folder, const char* path, const char* to = nullptr);

/// Whether this allocation is to fail; errno is then set.
bool strikesAllocation(std::size_t size);

/// How much of a read or write is done: all of it, a part, or -1 for none; errno is then set.
long grantedSize(const char* call, int descriptor, std::size_t size);

}  // namespace quenfold::faults
