#include "logicalio/unpack.h"

#include <string_view>

#include "app/error.h"
#include "app/files.h"
#include "json/cjson_access.h"
#include "json/cjson_tree.h"
#include "json/format.h"
#include "json/label_files.h"
#include "logicalio/legacy_writer.h"
#include "logicalio/side_files.h"

namespace quenfold {
namespace {

/// The message ends in a line end of its own.
[[noreturn]] void throwParseError() {
  constexpr std::size_t kShown = 12;
  const char* const position = cJSON_GetErrorPtr();
  const std::string_view rest = position == nullptr ? std::string_view() : position;
  throw runtimeError("JSON Parse Error: {}\n", rest.substr(0, kShown));
}

CJsonDocument parsePackedText(const std::string& text, TimePoint& stageStart) {
  stageStart = now();
  CJsonDocument document = parseCJson(text);
  if (!document) {
    throwParseError();
  }
  logElapsed(stageStart, "parsed JSON");
  return document;
}

/// Gives the port labels, and names the dictionary's devices by label.
PortLabelMap loadLabelFiles(const std::string& directory, PortDict& dict) {
  const std::vector<DeviceLabel> devices =
      parseDeviceLabels(joinPath(directory, packedFileName(kDeviceLabelsSection)));
  PortLabelMap portLabels = loadPortLabels(joinPath(directory, packedFileName(kPortLabelsSection)),
                                           false, labelOfDevice(devices));
  nameDevicesByLabel(devices, dict);
  return portLabels;
}

UnpackedTable readPackedFiles(const std::string& stem, const std::string& directory,
                              TimePoint& stageStart) {
  const CJsonDocument document =
      parsePackedText(readFile(joinPath(directory, stem + kPortsFile)), stageStart);
  const TableKind& kind = packedKindOf(*document);
  const cJSON* const table = findMember(document.get(), kind.topLevelKey);
  requirePackedMembers(table);
  PackedContext context;
  loadPortDict(table, context.portDict);
  logElapsed(stageStart, "loaded Port Dictionary from JSON");
  const PortLabelMap portLabels = loadLabelFiles(directory, context.portDict);
  context.portLabels = &portLabels;
  context.names = parseLabelMap(joinPath(directory, stem + kLabelsFile));
  context.categories = parseLegacyCategoryMap(joinPath(directory, stem + kLegacyCategoriesFile));
  return unpackTable(kind, *table, context, stageStart);
}

}  // namespace

UnpackedTable unpackTable(const TableKind& kind, const cJSON& table, const PackedContext& context,
                          TimePoint& stageStart) {
  UnpackedTable unpacked;
  unpacked.kind = &kind;
  unpacked.levelCount = intValues(findMember(&table, kLevelKeysKey)).size();
  UnpackedRecords parsed = parsePackedLogicalIOTable(&table, context);
  logElapsed(stageStart, "parsed packed Logical IO Table");
  unpacked.records = std::move(parsed.records);
  unpacked.fingerprints = hashLogicalIO(unpacked.records);
  unpacked.fingerprints[kPortKey] = parsed.portFingerprint;
  logElapsed(stageStart, "created Hashes");
  return unpacked;
}

std::pair<std::string, std::string> printUnpacked(const UnpackedTable& table,
                                                  TimePoint& stageStart) {
  CJsonDocument document = buildCJson([&] {
    cJSON* const entries = entriesToJson(table.records, *table.kind, table.levelCount);
    logElapsed(stageStart, "Created velmora JSON object");
    return legacyFileToJson(*table.kind, entries);
  });
  logElapsed(stageStart, "Added Container Details");
  std::string legacy = printed(std::move(document));
  std::string hash = hashText(table.kind->topLevelKey, table.fingerprints);
  logElapsed(stageStart, "Serialized JSON");
  return {std::move(legacy), std::move(hash)};
}

std::pair<std::string, std::string> convertPackedToVelmora(const std::string& stem,
                                                           const std::string& directory) {
  TimePoint stageStart;  // begins once the packed ports are read
  return printUnpacked(readPackedFiles(stem, directory, stageStart), stageStart);
}

}  // namespace quenfold
