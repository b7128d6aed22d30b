#include "database/legacy_database.h"

#include <cjson/cJSON.h>
#include <fmt/core.h>

#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "app/error.h"
#include "app/files.h"
#include "app/stage_timer.h"
#include "database/faulty_file.h"
#include "database/folder.h"
#include "database/unheard.h"
#include "json/cjson_access.h"
#include "json/format.h"
#include "json/writer.h"
#include "logicalio/legacy_reader.h"
#include "logicalio/pack.h"
#include "matrices/legacy_reader.h"
#include "matrices/pack.h"

namespace quenfold::database {
namespace {

constexpr std::string_view kZeroByte = "\\u0000";

LegacyMatrices readMatricesFile(const std::string& path) {
  LegacyMatrices read;
  read.text = std::make_unique<std::string>(readFile(path));
  read.root = parseJson(*read.text);
  try {
    read.matrices = &packing::matricesOf(read.root);
  } catch (const std::runtime_error& failure) {
    throw faultOf(path, readFile(path), failure);
  }
  return read;
}

const TableKind& kindOf(const cJSON& document) {
  try {
    return legacyKindOf(document);
  } catch (const std::runtime_error&) {
    throw runtimeError("holds neither {} nor {}", kPackedTables.back().topLevelKey,
                       kPackedTables.front().topLevelKey);
  }
}

/// The member's key as the file spells it may differ from the kind's in letter case.
void chooseKind(LegacyTable& table, Table expected) {
  table.kind = &kindOf(*table.document);
  table.contents = findMember(table.document.get(), table.kind->topLevelKey);
  if (table.kind->outputKey != std::string_view(kTableOutputs.at(expected))) {
    throw runtimeError("holds {}", table.kind->topLevelKey);
  }
}

LegacyTable readTable(const std::string& path, Table expected) {
  const std::string text = readFile(path);
  LegacyTable table;
  table.document = parseCJson(text);
  if (!table.document) {
    throw noJson(path, static_cast<std::size_t>(cJSON_GetErrorPtr() - text.c_str()));
  }
  table.hasZeroBytes = text.find(kZeroByte) != std::string::npos;
  try {
    chooseKind(table, expected);
  } catch (const std::runtime_error& failure) {
    throw runtimeError("{}: {}", path, failure.what());
  }
  return table;
}

std::string placeOf(const packing::ReadingPosition& reached) {
  std::string place = fmt::format("{}.{}[{}]", kConfig, kMatrices, reached.matrix);
  return reached.port ? place + fmt::format(".{}[{}]", kMatrixPorts, *reached.port) : place;
}

void packMatricesInto(PackedSet& packed, const JsonValue& matrices) {
  packing::MatricesModel model(unheard());
  try {
    readMatrices(matrices, model);
  } catch (const std::runtime_error& failure) {
    packed.stops.push_back({std::string(kMatricesFile), placeOf(model.reached), failure.what()});
  }
  for (const packing::DeviceLabelEntry& device : model.deviceLabels) {
    packed.devices.push_back({device.label, device.serial});
  }
  TimePoint stageStart = now();
  for (const auto& [section, text] : packMatrices(model, stageStart)) {
    packed.texts.emplace(packedFileName(section), textOf(text));
  }
}

/// A table whose reading stops is not packed at all.
void packTableInto(PackedSet& packed, Table place, const LegacyTable& table,
                   const std::vector<DeviceLabel>& devices) {
  PackedModel model(unheard());
  try {
    parseLegacyTable(*table.contents, *table.kind, packed.portKeys, model);
  } catch (const std::runtime_error& failure) {
    packed.stops.push_back({std::string(kTableFiles.at(place)),
                            fmt::format("{}.{}[{}]", table.kind->topLevelKey,
                                        table.kind->entriesKey, model.records.size()),
                            failure.what()});
    return;
  }
  nameDevicesById(devices, model.portDict);
  PackedTexts texts = printPacked(model);
  packed.texts.emplace(model.outputKey + kPortsFile, std::move(texts.ports));
  packed.texts.emplace(model.outputKey + kLabelsFile, std::move(texts.labels));
  packed.texts.emplace(model.outputKey + kLegacyCategoriesFile, std::move(texts.categories));
}

}  // namespace

LegacyDatabase readLegacyDatabase(const std::string& folder) {
  LegacyDatabase database;
  database.folder = folder;
  database.matrices = readMatricesFile(joinPath(folder, kMatricesFile));
  for (const Table table : kTables) {
    const std::string path = joinPath(folder, kTableFiles.at(table));
    if (isThere(path)) {
      database.tables.at(table) = readTable(path, table);
    }
  }
  return database;
}

PackedSet packInMemory(const LegacyDatabase& legacy) {
  PackedSet packed;
  packMatricesInto(packed, *legacy.matrices.matrices);
  const std::vector<DeviceLabel> devices =
      deviceLabelsOf(packed.texts.at(packedFileName(kDeviceLabelsSection)));
  packed.portKeys = portLabelsOf(packed.texts.at(packedFileName(kPortLabelsSection)), true,
                                 labelOfDevice(devices));
  for (const Table table : kTables) {
    if (legacy.tables.at(table)) {
      packTableInto(packed, table, *legacy.tables.at(table), devices);
    }
  }
  return packed;
}

}  // namespace quenfold::database
