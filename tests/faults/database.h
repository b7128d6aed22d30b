#pragma once

#include <filesystem>

#include "faults/program_run.h"

namespace quenfold::faults {

/// Enters the folder, which has the legacy files in "in", and packs them into "packed".
void packDatabase(const RunPlan& plan, const std::filesystem::path& folder);

}  // namespace quenfold::faults
