#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/files.h"
#include "app/stage_timer.h"
#include "matrices/expand.h"
#include "matrices/format.h"
#include "matrices/legacy_writer.h"
#include "matrices/packed_reader.h"

namespace quenfold {

/// The tree of a "dbpack_matrices.json" text. Throws "matrices object not found" and what
/// `loadPortTree` throws. Reports its stages.
unpacking::PortTree parsePortTree(std::string text, TimePoint& stageStart);

/// One of the legacy files. The text of a file is made while it is written, so its stages have
/// nothing left to do but to be reported where they always were.
struct LegacyFile {
  std::string_view name;
  void (unpacking::LegacyWriter::*write)(OutputFile& out);
  std::array<std::string_view, 2> stages;
  std::size_t unpacking::ExpandedTree::*ports;  // without any there is no stage; null for always
};

/// In the order in which they are written.
inline constexpr std::array<LegacyFile, 5> kLegacyFiles = {{
    {kMatricesFile,
     &unpacking::LegacyWriter::writeMatrices,
     {"      Created matrices JSON", "      serialized matrices JSON"},
     nullptr},
    {kAvailableInputsFile,
     &unpacking::LegacyWriter::writeAvailableInputs,
     {"      serialized available JSON"},
     &unpacking::ExpandedTree::inputs},
    {kAvailableOutputsFile,
     &unpacking::LegacyWriter::writeAvailableOutputs,
     {"      serialized available JSON"},
     &unpacking::ExpandedTree::outputs},
    {kPortLabelsFile,
     &unpacking::LegacyWriter::writePortLabels,
     {"      createPortLabels serializeJSON"},
     &unpacking::ExpandedTree::ports},
    {kUserPortLabelsFile,
     &unpacking::LegacyWriter::writeUserPortLabels,
     {"      createUserPortLabels serializeJSON"},
     &unpacking::ExpandedTree::ports},
}};

/// Rebuilds the legacy files named in `outputFiles` (other names are ignored) from the packed
/// matrices and label files of `sourceDir` and writes them into `outputDir`, which is created when
/// it is missing. Nothing is written before everything that the input can make fail has been tried.
/// Returns the bytes written, modulo 2^32. Throws what the loaders and `writeFile` throw, and a
/// system error "mkdir(<outputDir>): ...".
std::uint32_t convertPackedMatrices(const std::string& sourceDir,
                                    const std::vector<std::string>& outputFiles,
                                    const std::string& outputDir);

}  // namespace quenfold
