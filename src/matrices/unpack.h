#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quenfold {

/// Rebuilds the legacy files named in `outputFiles` (other names are ignored) from the packed
/// matrices and label files of `sourceDir` and writes them into `outputDir`, which is created when
/// it is missing. Nothing is written before everything that the input can make fail has been tried.
/// Returns the bytes written, modulo 2^32. Throws what the loaders and `writeFile` throw, and a
/// system error "mkdir(<outputDir>): ...".
std::uint32_t convertPackedMatrices(const std::string& sourceDir,
                                    const std::vector<std::string>& outputFiles,
                                    const std::string& outputDir);

}  // namespace quenfold
