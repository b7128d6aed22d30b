#pragma once

#include <filesystem>

#include "faults/program_run.h"

namespace quenfold::faults {

/// Writes "matrices.json" and "sources.json" of a database that makes the program read every file
/// in several pieces and lets every list grow far beyond its first index: 200 each of devices,
/// slots of a device, ports and port patterns of a slot, types of a port, channels of a type,
/// labels and records. The same bytes each time.
void writeLargeDatabase(const std::filesystem::path& folder);

/// Enters the folder, which has the legacy files in "in", and packs them into "packed".
void packDatabase(const RunPlan& plan, const std::filesystem::path& folder);

/// Throws a runtime error unless the program needs more than one read for each file in "in" and
/// each one in "packed" that a conversion reads.
void requireSeveralReads(const std::filesystem::path& folder);

}  // namespace quenfold::faults
