#pragma once

#include <cstdint>
#include <string>

namespace quenfold {

/// Packs one legacy matrices file into the four files "dbpack_*.json" of the output directory.
/// `inputName` is the base name of the input file: only "matrices.json" is read, any other name
/// gives four empty files, and "portLabels.json" throws "portLabels not supported". `inputText` is
/// consumed. An error in the text is reported on standard error and what was read before it is
/// packed. Returns the bytes written, modulo 2^32. Throws what `writeFile` throws.
std::uint32_t convertMatricesToPacked(const std::string& inputName, std::string inputText,
                                      const std::string& outputDir);

}  // namespace quenfold
