#include "matrices/unpack.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "app/error.h"
#include "json/access.h"
#include "json/document.h"
#include "json/format.h"
#include "json/label_files.h"

namespace quenfold {
namespace {

using unpacking::ExpandedTree;
using unpacking::LegacyWriter;
using unpacking::PortTree;

/// All that is loaded: the expanded tree refers to it.
struct PackedFiles {
  std::vector<DeviceLabel> deviceLabels;
  PortLabelMap portLabels;
  PortTree tree;
};

PackedFiles loadPackedFiles(const std::string& sourceDir, TimePoint& runStage) {
  const auto pathOf = [&](const char* section) {
    return joinPath(sourceDir, packedFileName(section));
  };
  PackedFiles files;
  files.deviceLabels = parseDeviceLabels(pathOf(kDeviceLabelsSection));
  files.portLabels = loadPortLabels(pathOf(kPortLabelsSection), false, nullptr);
  files.tree = parsePortTree(readFile(pathOf(kMatricesSection)), runStage);
  return files;
}

ExpandedTree expand(const PackedFiles& files) {
  TimePoint stageStart = now();
  ExpandedTree expanded =
      unpacking::expandPortTree(files.tree, files.deviceLabels, files.portLabels);
  logElapsed(stageStart, "    Created matrix port map");
  return expanded;
}

void reportStages(const LegacyFile& file, const ExpandedTree& expanded) {
  TimePoint stageStart = now();
  if (file.ports != nullptr && expanded.*file.ports == 0) {
    return;
  }
  for (const std::string_view stage : file.stages) {
    if (!stage.empty()) {
      logElapsed(stageStart, stage);
    }
  }
}

struct Output {
  std::string path;
  std::string report;
  void (LegacyWriter::*write)(OutputFile& out);
};

std::vector<Output> planOutputs(const ExpandedTree& expanded,
                                const std::vector<std::string>& wanted,
                                const std::string& outputDir) {
  std::vector<Output> outputs;
  for (const LegacyFile& file : kLegacyFiles) {
    if (std::find(wanted.begin(), wanted.end(), file.name) != wanted.end()) {
      std::string path = joinPath(outputDir, file.name);
      std::string report = fmt::format("  saved: {}", path);
      outputs.push_back({std::move(path), std::move(report), file.write});
      reportStages(file, expanded);
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
std::uint32_t writeOutputs(const std::vector<Output>& outputs, LegacyWriter& writer,
                           TimePoint& runStage) {
  std::uint32_t total = 0;
  for (const Output& output : outputs) {
    OutputFile out(output.path);
    (writer.*output.write)(out);
    out.close();
    total += static_cast<std::uint32_t>(out.size());
    logElapsed(runStage, output.report);
  }
  return total;
}

}  // namespace

PortTree parsePortTree(std::string text, TimePoint& stageStart) {
  const JsonDocument root = parseJson(text);
  logElapsed(stageStart, "  Parsed JSON");
  const JsonValue* const matrices = findMember(root, kMatricesSection);
  if (matrices == nullptr) {
    throw runtimeError("matrices object not found");
  }
  PortTree tree = unpacking::loadPortTree(*matrices);
  logElapsed(stageStart, "  Created Devices List");
  return tree;
}

std::uint32_t convertPackedMatrices(const std::string& sourceDir,
                                    const std::vector<std::string>& outputFiles,
                                    const std::string& outputDir) {
  TimePoint runStage = now();
  const PackedFiles files = loadPackedFiles(sourceDir, runStage);
  const ExpandedTree expanded = expand(files);
  const std::vector<Output> outputs = planOutputs(expanded, outputFiles, outputDir);
  LegacyWriter writer(expanded);
  logElapsed(runStage, "  Finished unrolling and serializing all");
  ensureDirectory(outputDir);
  return writeOutputs(outputs, writer, runStage);
}

}  // namespace quenfold
