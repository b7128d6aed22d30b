#include "logicalio/pack.h"

#include <string_view>
#include <utility>
#include <vector>

#include "app/files.h"
#include "app/stage_timer.h"
#include "json/cjson_access.h"
#include "json/cjson_tree.h"
#include "json/format.h"
#include "json/label_files.h"
#include "logicalio/fingerprints.h"
#include "logicalio/format.h"
#include "logicalio/packed_writer.h"

namespace quenfold {
namespace {

/// Where they go; no hash path when there is no such file.
struct PackedPaths {
  std::string ports;
  std::string labels;
  std::string categories;
  std::string hash;
};

PackedPaths pathsOf(const std::string& outputKey, const std::string& inputName,
                    const std::string& outputDir) {
  return {joinPath(outputDir, outputKey + kPortsFile), joinPath(outputDir, outputKey + kLabelsFile),
          joinPath(outputDir, outputKey + kLegacyCategoriesFile),
          inputName.empty() ? std::string() : inputName + kHashFile};
}

/// For a text that tells nothing itself.
std::string outputKeyFromName(std::string_view inputName) {
  if (inputName.find(kSourcesFile) != std::string_view::npos) {
    return kSourcesOutput;
  }
  return inputName.find(kDestinationsFile) != std::string_view::npos ? kDestinationsOutput : "";
}

PackedModel readLegacyDocument(const CJsonDocument& document, const std::string& sourceDir,
                               TimePoint& stageStart) {
  PackedModel model;
  const TableKind& kind = legacyKindOf(*document);
  const cJSON* const table = findMember(document.get(), kind.topLevelKey);
  const std::vector<DeviceLabel> devices =
      parseDeviceLabels(joinPath(sourceDir, packedFileName(kDeviceLabelsSection)));
  const PortLabelMap portKeys = loadPortLabels(
      joinPath(sourceDir, packedFileName(kPortLabelsSection)), true, labelOfDevice(devices));
  parseLegacyTable(*table, kind, portKeys, model);
  logElapsed(stageStart, "created Dictionary");
  nameDevicesById(devices, model.portDict);
  logElapsed(stageStart, "replaced device display names with ID");
  return model;
}

PackedModel readLegacyText(const std::string& sourceDir, const std::string& inputName,
                           std::string inputText) {
  TimePoint stageStart = now();
  const CJsonDocument document = parseCJson(inputText);
  // The document does not need it: what comes next can have its memory.
  std::string().swap(inputText);
  logElapsed(stageStart, "parsed JSON");
  if (document) {
    return readLegacyDocument(document, sourceDir, stageStart);
  }
  PackedModel model;
  model.outputKey = outputKeyFromName(inputName);
  return model;
}

}  // namespace

PackedTexts printPacked(PackedModel& model) {
  TimePoint stageStart = now();
  CJsonDocument ports = buildCJson([&] {
    cJSON* const records = recordsToJson(model);
    logElapsed(stageStart, "Bit Packing");
    return portsFileToJson(model, records);
  });
  logElapsed(stageStart, "Added Container Details");
  PackedTexts texts;
  texts.ports = printed(std::move(ports));
  logElapsed(stageStart, "Serialized JSON");
  texts.labels = labelsText(model);
  texts.categories = categoriesText(model);
  texts.hash = hashText(model.topLevelKey, valuesOf(model.fingerprints));
  return texts;
}

std::uint32_t convertVelmoraToPacked(const std::string& sourceDir, const std::string& inputName,
                                     std::string inputText, const std::string& outputDir) {
  PackedModel model = readLegacyText(sourceDir, inputName, std::move(inputText));
  // All texts and paths are complete before the first file is touched: running out of memory costs
  // no file.
  const PackedTexts texts = printPacked(model);
  const PackedPaths paths = pathsOf(model.outputKey, inputName, outputDir);
  writeFile(paths.ports, texts.ports);
  writeFile(paths.labels, texts.labels);
  writeFile(paths.categories, texts.categories);
  if (!paths.hash.empty()) {
    writeFile(paths.hash, texts.hash);
  }
  return static_cast<std::uint32_t>(texts.ports.size() + texts.labels.size());
}

}  // namespace quenfold
