#pragma once

#include <cstdint>
#include <string>

#include "logicalio/legacy_reader.h"

namespace quenfold {

/// The texts of the packed files and that of the fingerprint file.
struct PackedTexts {
  std::string ports;
  std::string labels;
  std::string categories;
  std::string hash;
};

/// Packs the ports of a model whose devices are named as they are to be written. Reports its
/// stages.
PackedTexts printPacked(PackedModel& model);

/// Packs one legacy logical IO text (sources or destinations) into three files "...Ports.json",
/// "...Labels.json" and "...LegacyCategories.json" in `outputDir` and, when `inputName` is not
/// empty, the fingerprint file `inputName` + ".hash". The label files come from `sourceDir`.
/// Returns the bytes of the first two files, modulo 2^32. Throws a runtime error on bad input.
std::uint32_t convertVelmoraToPacked(const std::string& sourceDir, const std::string& inputName,
                                     std::string inputText, const std::string& outputDir);

}  // namespace quenfold
