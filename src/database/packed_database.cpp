#include "database/packed_database.h"

#include <cjson/cJSON.h>

#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "app/error.h"
#include "app/files.h"
#include "database/faulty_file.h"
#include "database/unheard.h"
#include "json/cjson_access.h"
#include "logicalio/side_files.h"
#include "matrices/unpack.h"

namespace quenfold::database {
namespace {

class Loader {
 public:
  Loader(FileTexts texts, const std::string& folder) : texts_(std::move(texts)), folder_(folder) {}

  PackedDatabase load() {
    PackedDatabase database;
    database.treePath = folder_.empty() ? std::string(kMatricesFile)
                                        : joinPath(folder_, packedFileName(kMatricesSection));
    loadSection(kDeviceLabelsSection,
                [&](std::string text) { database.devices = deviceLabelsOf(std::move(text)); });
    loadSection(kPortLabelsSection, [&](std::string text) {
      database.labelsByName = portLabelsOf(text, false, labelOfDevice(database.devices));
      database.portLabels = portLabelsOf(std::move(text), false, nullptr);
    });
    loadSection(kMatricesSection, [&](std::string text) {
      TimePoint stageStart = now();
      database.tree = parsePortTree(std::move(text), stageStart);
    });
    for (const Table table : kTables) {
      loadTable(kTableOutputs.at(table), database.tables.at(table), database.devices);
    }
    return database;
  }

 private:
  /// Calls load(text) for a file that is there.
  template <typename Load>
  void loadSection(const char* section, Load load) {
    const auto found = texts_.find(packedFileName(section));
    if (found == texts_.end()) {
      return;
    }
    try {
      load(found->second);
    } catch (const std::runtime_error& failure) {
      throw faultOf(joinPath(folder_, found->first), found->second, failure);
    }
    found->second = std::string();
  }

  /// Null for a file that is missing.
  CJsonDocument parseFile(const std::string& name) {
    const auto found = texts_.find(name);
    if (found == texts_.end()) {
      return {};
    }
    CJsonDocument document = parseCJson(found->second);
    if (!document) {
      const char* const error = cJSON_GetErrorPtr();
      throw noJson(joinPath(folder_, name),
                   static_cast<std::size_t>(error - found->second.c_str()));
    }
    return document;
  }

  template <typename Map>
  void loadSideFile(const std::string& name, const CJsonDocument& document,
                    Map (*mapOf)(const cJSON*), Map& map) {
    try {
      if (document) {
        map = mapOf(document.get());
      }
    } catch (const std::runtime_error& failure) {
      throw runtimeError("{}: {}", joinPath(folder_, name), failure.what());
    }
  }

  void loadContents(PackedTable& table, const std::string& output,
                    const std::vector<DeviceLabel>& devices) {
    table.kind = &packedKindOf(*table.document);
    if (table.kind->outputKey != output) {
      throw runtimeError("holds {}", table.kind->outputKey);
    }
    table.contents = findMember(table.document.get(), table.kind->topLevelKey);
    requirePackedMembers(table.contents);
    if (table.context.portDict.fromJson(*findMember(table.contents, kPortDictKey))) {
      throw runtimeError("{} without {} or {}", kPortDictKey, kVersionKey, kRefMapsKey);
    }
    nameDevicesByLabel(devices, table.context.portDict);
  }

  void loadTable(const std::string& output, std::optional<PackedTable>& loaded,
                 const std::vector<DeviceLabel>& devices) {
    CJsonDocument document = parseFile(output + kPortsFile);
    if (!document) {
      return;
    }
    PackedTable& table = loaded.emplace(PackedTable{nullptr,
                                                    std::move(document),
                                                    nullptr,
                                                    parseFile(output + kLabelsFile),
                                                    parseFile(output + kLegacyCategoriesFile),
                                                    PackedContext(unheard()),
                                                    {}});
    try {
      loadContents(table, output, devices);
    } catch (const std::runtime_error& failure) {
      throw runtimeError("{}: {}", joinPath(folder_, output + kPortsFile), failure.what());
    }
    loadSideFiles(output, table);
    try {
      table.records = parsePackedLogicalIOTable(table.contents, table.context).records;
    } catch (const std::runtime_error& failure) {
      throw runtimeError("{}: {}", joinPath(folder_, output + kPortsFile), failure.what());
    }
  }

  void loadSideFiles(const std::string& output, PackedTable& table) {
    loadSideFile(output + kLabelsFile, table.labels, labelMapOf, table.context.names);
    loadSideFile(output + kLegacyCategoriesFile, table.categories, legacyCategoryMapOf,
                 table.context.categories);
  }

  FileTexts texts_;
  const std::string& folder_;
};

}  // namespace

PackedDatabase loadPackedDatabase(FileTexts texts, const std::string& folder) {
  return Loader(std::move(texts), folder).load();
}

}  // namespace quenfold::database
