#pragma once

#include <cstdint>
#include <string>

#include "app/stage_timer.h"
#include "matrices/legacy_reader.h"
#include "matrices/packed_writer.h"

namespace quenfold {

/// The texts of the packed files of what was read, whose devices are then named by frame ID.
/// Reports its stages.
packing::Sections packMatrices(packing::MatricesModel& model, TimePoint& stageStart);

/// Packs one legacy matrices file into the four files "dbpack_*.json" of the output directory.
/// `inputName` is the base name of the input file: only "matrices.json" is read, any other name
/// gives four empty files, and "portLabels.json" throws "portLabels not supported". `inputText` is
/// consumed. An error in the text is reported on standard error and what was read before it is
/// packed. Returns the bytes written, modulo 2^32. Throws what `writeFile` throws.
std::uint32_t convertMatricesToPacked(const std::string& inputName, std::string inputText,
                                      const std::string& outputDir);

}  // namespace quenfold
