#include "logicalio/unpack.h"

#include <cstddef>
#include <string_view>

#include "app/error.h"
#include "app/files.h"
#include "app/stage_timer.h"
#include "json/cjson_access.h"
#include "json/cjson_tree.h"
#include "json/format.h"
#include "json/label_files.h"
#include "logicalio/fingerprints.h"
#include "logicalio/format.h"
#include "logicalio/legacy_writer.h"
#include "logicalio/packed_reader.h"
#include "logicalio/side_files.h"

namespace quenfold {
namespace {

/// A packed document without its files: what is left to write once its tree is gone.
struct UnpackedTable {
  const TableKind* kind = nullptr;
  std::size_t levelCount = 0;
  std::vector<LogicalIORecord> records;
  FingerprintValues fingerprints;
};

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

void loadPortDict(const cJSON* table, PortDict& dict) {
  const std::error_code failure = dict.fromJson(*findMember(table, kPortDictKey));
  if (failure) {
    throw runtimeError("{}", failure.message());
  }
}

void loadLabelFiles(const std::string& directory, PackedContext& context) {
  const std::vector<DeviceLabel> devices =
      parseDeviceLabels(joinPath(directory, packedFileName(kDeviceLabelsSection)));
  context.portLabels = loadPortLabels(joinPath(directory, packedFileName(kPortLabelsSection)),
                                      false, labelOfDevice(devices));
  nameDevicesByLabel(devices, context.portDict);
}

UnpackedTable readPackedFiles(const std::string& stem, const std::string& directory,
                              TimePoint& stageStart) {
  const CJsonDocument document =
      parsePackedText(readFile(joinPath(directory, stem + kPortsFile)), stageStart);
  UnpackedTable unpacked;
  unpacked.kind = &packedKindOf(*document);
  const cJSON* const table = findMember(document.get(), unpacked.kind->topLevelKey);
  requirePackedMembers(table);
  unpacked.levelCount = intValues(findMember(table, kLevelKeysKey)).size();
  PackedContext context;
  loadPortDict(table, context.portDict);
  logElapsed(stageStart, "loaded Port Dictionary from JSON");
  loadLabelFiles(directory, context);
  context.names = parseLabelMap(joinPath(directory, stem + kLabelsFile));
  context.categories = parseLegacyCategoryMap(joinPath(directory, stem + kLegacyCategoriesFile));
  UnpackedRecords parsed = parsePackedLogicalIOTable(table, context);
  logElapsed(stageStart, "parsed packed Logical IO Table");
  unpacked.records = std::move(parsed.records);
  unpacked.fingerprints = hashLogicalIO(unpacked.records);
  unpacked.fingerprints[kPortKey] = parsed.portFingerprint;
  logElapsed(stageStart, "created Hashes");
  return unpacked;
}

}  // namespace

std::pair<std::string, std::string> convertPackedToVelmora(const std::string& stem,
                                                           const std::string& directory) {
  TimePoint stageStart;  // begins once the packed ports are read
  const UnpackedTable table = readPackedFiles(stem, directory, stageStart);
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

}  // namespace quenfold
