#include "database/check_packed.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "app/key_hash.h"
#include "database/expand_tree.h"
#include "database/packed_fingerprints.h"
#include "json/cjson_access.h"
#include "logicalio/format.h"
#include "matrices/expand.h"
#include "matrices/unpacked_port.h"

namespace quenfold::database {
namespace {

using Keys = std::unordered_set<std::string_view, TextHash>;

void add(Findings& findings, Kind kind, std::string_view file, const std::string& place) {
  findings.add(kind, file, [&] { return place; });
}

void checkFile(const FileTexts& texts, const std::string& name, Findings& findings) {
  if (texts.find(name) == texts.end()) {
    add(findings, Kind::kFileMissing, name, name);
  }
}

Keys idsOf(const std::vector<DeviceLabel>& devices) {
  Keys ids;
  for (const DeviceLabel& device : devices) {
    ids.insert(device.id);
  }
  return ids;
}

/// What a table may call a device. Packing gives it the label where another one of the table is
/// already called as its id.
Keys namesOf(const std::vector<DeviceLabel>& devices) {
  Keys names = idsOf(devices);
  for (const DeviceLabel& device : devices) {
    names.insert(device.label);
  }
  return names;
}

void checkRanges(const std::string& slot, const unpacking::PortTypeGroup& group,
                 Findings& findings) {
  const auto addRange = [&](std::string_view what, std::int32_t first, std::int32_t last) {
    if (first > last) {
      add(findings, Kind::kRangeEmpty, packedFileName(kMatricesSection),
          fmt::format("{}.{}{} {} to {}", slot, patternText(group), what, first, last));
    }
  };
  addRange("", group.first, group.last);
  for (const auto& [type, channels] : group.types) {
    addRange(fmt::format(".{}", type), channels.first, channels.last);
  }
}

/// The labels' keys that no port of the tree has.
Keys unusedKeys(const PackedDatabase& database, const unpacking::ExpandedTree& expanded) {
  Keys unused;
  for (const PortLabelMap::Entry& entry : database.portLabels.entries()) {
    unused.insert(entry.key);
  }
  unpacking::PortPrinter printer(expanded.longestName);
  for (const unpacking::ExpandedBlock& block : expanded.blocks) {
    if (!unused.empty()) {
      forEachName(block.device.id, block.ports, printer,
                  [&](std::string_view name) { unused.erase(name); });
    }
  }
  return unused;
}

class PackedTableCheck {
 public:
  PackedTableCheck(const PackedTable& table, Findings& findings)
      : table_(table), findings_(findings), file_(std::string(table.kind->outputKey) + kPortsFile) {
    const cJSON* entry = firstChild(findMember(table.contents, kLogicalIOKey));
    for (; entry != nullptr; entry = entry->next) {
      const cJSON* const id = findMember(entry, kIdKey);
      if (++ids_[static_cast<std::uint32_t>(id->valueint)] == 2) {
        add(findings_, Kind::kIdRepeated, file_, fmt::format("{} {}", file_, id->valueint));
      }
      checkRecord(*entry, id->valueint);
    }
  }

  void checkSideFiles() {
    for (const auto& [id, name] : table_.context.names) {
      checkUsed(Kind::kNameUnused, kLabelsFile, id);
    }
    for (const auto& [id, categories] : table_.context.categories) {
      checkUsed(Kind::kCategoryUnused, kLegacyCategoriesFile, id);
    }
  }

  void checkDevices(const Keys& known) {
    const cJSON* const maps = findMember(findMember(table_.contents, kPortDictKey), kRefMapsKey);
    const cJSON* pair = firstChild(findMember(maps, kPortFieldNames.at(kDevice)));
    for (; pair != nullptr; pair = pair->next) {
      const char* const name = pair->child == nullptr ? nullptr : stringValue(pair->child->next);
      if (name != nullptr && known.count(name) == 0) {
        add(findings_, Kind::kDeviceUnknown, file_, name);
      }
    }
  }

 private:
  void checkRecord(const cJSON& entry, std::int32_t id) {
    const auto named = table_.context.names.find(static_cast<std::uint32_t>(id));
    const char* const own = stringValue(findMember(&entry, kNameKey));
    if (named == table_.context.names.end() && own == nullptr) {
      add(findings_, Kind::kNameMissing, file_, fmt::format("{} {}", file_, id));
    }
    const std::string_view name = named != table_.context.names.end()
                                      ? std::string_view(named->second)
                                  : own == nullptr ? std::string_view()
                                                   : own;
    std::size_t position = 0;
    const cJSON* port = firstChild(findMember(&entry, kPortKey));
    for (; port != nullptr; port = port->next) {
      ++position;
      if (cJSON_IsNumber(port) != 0 && !isDefined(toUint64(port->valuedouble))) {
        add(findings_, Kind::kPortUndefined, file_,
            fmt::format("{} {} \"{}\" port {}: {}", file_, id, name, position,
                        toUint64(port->valuedouble)));
      }
    }
  }

  [[nodiscard]] bool isDefined(std::uint64_t packed) const {
    const PortDict& dict = table_.context.portDict;
    const PortKeyIds ids = dict.unpackIds(packed);
    return dict.device.containsId(ids.device) && dict.port_prefix.containsId(ids.port_prefix) &&
           dict.type.containsId(ids.type) &&
           (dict.slot.containsId(ids.slot) || ids.slot < dict.impliedSlots);
  }

  void checkUsed(Kind kind, const char* ending, std::uint32_t id) {
    if (ids_.count(id) == 0) {
      const std::string file = std::string(table_.kind->outputKey) + ending;
      add(findings_, kind, file, fmt::format("{} {}", file, static_cast<std::int32_t>(id)));
    }
  }

  const PackedTable& table_;
  Findings& findings_;
  std::string file_;
  std::unordered_map<std::uint32_t, std::size_t> ids_;  // to the number of their records
};

}  // namespace

void checkFiles(const FileTexts& texts, Findings& findings) {
  for (const char* const section : kPackedSections) {
    checkFile(texts, packedFileName(section), findings);
  }
  for (const std::string output : kTableOutputs) {
    const bool any = std::any_of(kPackedTableFiles.begin(), kPackedTableFiles.end(),
                                 [&](const char* file) { return texts.count(output + file) != 0; });
    for (const char* const file : kPackedTableFiles) {
      if (any) {
        checkFile(texts, output + file, findings);
      }
    }
  }
}

void checkTree(const PackedDatabase& database, Findings& findings) {
  const Keys known = idsOf(database.devices);
  for (const auto& [device, slots] : database.tree) {
    if (known.count(device) == 0) {
      add(findings, Kind::kDeviceUnknown, packedFileName(kMatricesSection), device);
    }
    for (const auto& [slot, groups] : slots) {
      for (const unpacking::PortTypeGroup& group : groups) {
        checkRanges(fmt::format("{}.{}", device, slot), group, findings);
      }
    }
  }
  const unpacking::ExpandedTree expanded = expandTree(database, database.portLabels);
  const Keys unused = unusedKeys(database, expanded);
  for (const std::string_view key : std::set<std::string_view>(unused.begin(), unused.end())) {
    add(findings, Kind::kLabelUnused, packedFileName(kPortLabelsSection), std::string(key));
  }
}

void checkPackedTable(const PackedTable& table, const std::vector<DeviceLabel>& devices,
                      Findings& findings) {
  PackedTableCheck check(table, findings);
  check.checkSideFiles();
  check.checkDevices(namesOf(devices));
  checkFingerprints(table, findings);
}

}  // namespace quenfold::database
