#include "matrices/unpack.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "app/error.h"
#include "app/files.h"
#include "app/stage_timer.h"
#include "json/access.h"
#include "json/document.h"
#include "json/label_files.h"
#include "json/sections.h"
#include "matrices/expand.h"
#include "matrices/legacy_format.h"
#include "matrices/legacy_texts.h"
#include "matrices/port_tree.h"

namespace quenfold {
namespace {

using unpacking::ExpandedTree;
using unpacking::PortReferences;
using unpacking::PortTree;

struct Output {
  std::string path;
  std::string report;
  JsonBuffer text;
};

PortTree loadTree(const std::string& path, TimePoint& runStage) {
  std::string text = readFile(path);
  const JsonDocument root = parseJson(text);
  logElapsed(runStage, "  Parsed JSON");
  const JsonValue* const matrices = findMember(root, kMatricesSection);
  if (matrices == nullptr) {
    throw runtimeError("matrices object not found");
  }
  PortTree tree = unpacking::loadPortTree(*matrices);
  logElapsed(runStage, "  Created Devices List");
  return tree;
}

ExpandedTree loadAndExpand(const std::string& sourceDir, const PortLabelMap& portLabels,
                           const std::vector<DeviceLabel>& deviceLabels, TimePoint& runStage) {
  const PortTree tree = loadTree(joinPath(sourceDir, packedFileName(kMatricesSection)), runStage);
  TimePoint stageStart = now();
  ExpandedTree expanded = unpacking::expandPortTree(tree, deviceLabels, portLabels);
  logElapsed(stageStart, "    Created matrix port map");
  return expanded;
}

/// The text is written as it is built, so the second stage has nothing left to do.
JsonBuffer buildMatrices(const ExpandedTree& expanded) {
  TimePoint stageStart = now();
  JsonBuffer text = unpacking::matricesText(expanded.matrices);
  logElapsed(stageStart, "      Created matrices JSON");
  logElapsed(stageStart, "      serialized matrices JSON");
  return text;
}

JsonBuffer buildAvailable(const PortReferences& ports) {
  TimePoint stageStart = now();
  JsonBuffer text = unpacking::availableText(ports);
  if (!ports.empty()) {
    logElapsed(stageStart, "      serialized available JSON");
  }
  return text;
}

JsonBuffer buildAvailableInputs(const ExpandedTree& expanded) {
  return buildAvailable(expanded.inputs);
}

JsonBuffer buildAvailableOutputs(const ExpandedTree& expanded) {
  return buildAvailable(expanded.outputs);
}

JsonBuffer buildPortLabels(const ExpandedTree& expanded) {
  TimePoint stageStart = now();
  JsonBuffer text = unpacking::portLabelsText(expanded.allPorts);
  if (!expanded.allPorts.empty()) {
    logElapsed(stageStart, "      createPortLabels serializeJSON");
  }
  return text;
}

JsonBuffer buildUserPortLabels(const ExpandedTree& expanded) {
  TimePoint stageStart = now();
  JsonBuffer text = unpacking::userPortLabelsText(expanded.allPorts);
  if (!expanded.allPorts.empty()) {
    logElapsed(stageStart, "      createUserPortLabels serializeJSON");
  }
  return text;
}

struct LegacyFile {
  std::string_view name;
  JsonBuffer (*build)(const ExpandedTree& expanded);
};

/// In the order in which they are built and written.
constexpr std::array<LegacyFile, 5> kLegacyFiles = {{
    {kMatricesFile, buildMatrices},
    {kAvailableInputsFile, buildAvailableInputs},
    {kAvailableOutputsFile, buildAvailableOutputs},
    {kPortLabelsFile, buildPortLabels},
    {kUserPortLabelsFile, buildUserPortLabels},
}};

std::vector<Output> buildOutputs(const ExpandedTree& expanded,
                                 const std::vector<std::string>& wanted,
                                 const std::string& outputDir) {
  std::vector<Output> outputs;
  for (const LegacyFile& file : kLegacyFiles) {
    if (std::find(wanted.begin(), wanted.end(), file.name) != wanted.end()) {
      std::string path = joinPath(outputDir, file.name);
      std::string report = fmt::format("  saved: {}", path);
      outputs.push_back({std::move(path), std::move(report), file.build(expanded)});
    }
  }
  return outputs;
}

/// Anything that exists under the name is used as it is; writing into it will tell.
void ensureDirectory(const std::string& directory) {
  struct stat status = {};
  constexpr mode_t kOwnerOnly = 0700;
  if (stat(directory.c_str(), &status) != 0 && mkdir(directory.c_str(), kOwnerOnly) != 0) {
    throw std::system_error(errno, std::generic_category(), fmt::format("mkdir({})", directory));
  }
}

/// Nothing is allocated between the first file and the last.
std::uint32_t writeOutputs(const std::vector<Output>& outputs, TimePoint& runStage) {
  std::uint32_t total = 0;
  for (const Output& output : outputs) {
    const std::string_view text = textOf(output.text);
    total += static_cast<std::uint32_t>(text.size());
    writeFile(output.path, text);
    logElapsed(runStage, output.report);
  }
  return total;
}

std::vector<Output> buildAll(const std::string& sourceDir,
                             const std::vector<std::string>& outputFiles,
                             const std::string& outputDir, TimePoint& runStage) {
  const std::vector<DeviceLabel> deviceLabels =
      parseDeviceLabels(joinPath(sourceDir, packedFileName(kDeviceLabelsSection)));
  const PortLabelMap portLabels =
      loadPortLabels(joinPath(sourceDir, packedFileName(kPortLabelsSection)), false, nullptr);
  const ExpandedTree expanded = loadAndExpand(sourceDir, portLabels, deviceLabels, runStage);
  return buildOutputs(expanded, outputFiles, outputDir);
}

}  // namespace

std::uint32_t convertPackedMatrices(const std::string& sourceDir,
                                    const std::vector<std::string>& outputFiles,
                                    const std::string& outputDir) {
  TimePoint runStage = now();
  const std::vector<Output> outputs = buildAll(sourceDir, outputFiles, outputDir, runStage);
  logElapsed(runStage, "  Finished unrolling and serializing all");
  ensureDirectory(outputDir);
  return writeOutputs(outputs, runStage);
}

}  // namespace quenfold
