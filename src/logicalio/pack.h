#pragma once

#include <cstdint>
#include <string>

namespace quenfold {

/// Packs one legacy logical IO text (sources or destinations) into three files "...Ports.json",
/// "...Labels.json" and "...LegacyCategories.json" in `outputDir` and, when `inputName` is not
/// empty, the fingerprint file `inputName` + ".hash". The label files come from `sourceDir`.
/// Returns the bytes of the first two files, modulo 2^32. Throws a runtime error on bad input.
std::uint32_t convertVelmoraToPacked(const std::string& sourceDir, const std::string& inputName,
                                     std::string inputText, const std::string& outputDir);

}  // namespace quenfold
