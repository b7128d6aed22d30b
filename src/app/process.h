#pragma once

namespace quenfold {

/// Makes failures of the process what a run can report, before anything else is done: a write
/// beyond the file size limit, or into a pipe that nobody reads, fails like any other instead of
/// ending the process between two files. A run that finds no memory for an exception ends with
/// "std::bad_alloc" on standard error and that status.
void prepareProcess(int statusWithoutMemory);

}  // namespace quenfold
