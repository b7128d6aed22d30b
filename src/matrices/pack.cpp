#include "matrices/pack.h"

#include <string_view>
#include <utility>
#include <vector>

#include "app/files.h"
#include "json/format.h"
#include "json/writer.h"
#include "matrices/pack_tree.h"

namespace quenfold {
namespace {

using packing::DeviceList;
using packing::MatricesModel;
using packing::Sections;

void consolidateAll(DeviceList& devices) {
  for (packing::PackDevice& device : devices) {
    for (packing::PackSlot& slot : device.slots) {
      packing::consolidate(slot);
    }
  }
}

/// Devices are not searched by name any more once this has run.
void nameByFrameId(MatricesModel& model) {
  for (packing::PackDevice& device : model.devices) {
    if (const auto* const entry = model.deviceLabels.find(device.name)) {
      device.name = entry->serial;
    }
  }
}

/// Nothing is allocated between the first file and the last.
std::uint32_t writeSections(const Sections& sections, const std::string& outputDir) {
  std::vector<std::string> paths;
  for (const auto& [name, buffer] : sections) {
    paths.push_back(joinPath(outputDir, packedFileName(name)));
  }
  std::uint32_t total = 0;
  auto path = paths.begin();
  for (const auto& [name, buffer] : sections) {
    const std::string_view text = textOf(buffer);
    writeFile(*path++, text);
    total += static_cast<std::uint32_t>(text.size());
  }
  return total;
}

}  // namespace

Sections packMatrices(MatricesModel& model, TimePoint& stageStart) {
  consolidateAll(model.devices);
  logElapsed(stageStart, "Consolidated port entries");
  nameByFrameId(model);
  logElapsed(stageStart, "Replaced user device labels with unique frame ID");
  Sections sections = packing::buildSections(model);
  logElapsed(stageStart, "serialized JSON");
  return sections;
}

std::uint32_t convertMatricesToPacked(const std::string& inputName, std::string inputText,
                                      const std::string& outputDir) {
  TimePoint stageStart = now();
  // Kept on purpose: reported at once, before anything is parsed.
  logElapsed(stageStart, "Parsed JSON");
  MatricesModel model;
  packing::readMatrices(inputName, std::move(inputText), model);
  logElapsed(stageStart, "Created tree structure");
  return writeSections(packMatrices(model, stageStart), outputDir);
}

}  // namespace quenfold
