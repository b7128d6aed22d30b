#include "logicalio/packed_writer.h"

#include "json/cjson_access.h"
#include "json/cjson_tree.h"
#include "logicalio/format.h"

// What is written, in this order of members:
//   <output key>Ports.json              {<output key>: {"version": 10, "portDict": {...},
//                                         "levelKeys": [...], "hash": {<name>: <value>, ...},
//                                         "logicalIO": [{"id", "tally"?, "redirect"?,
//                                                        "description"?, "port": [...]}, ...]}}
//   <output key>Labels.json             {<output key>Labels: {"version": 10, "hash": <value>,
//                                         "labels": [[<id>, <name>], ...]}}
//   <output key>LegacyCategories.json   {<output key>LegacyCategories: {"version": 10,
//                                         "hash": <value>,
//                                         "legacyCategories": [[<id>, [<entry>, ...]], ...]}}

namespace quenfold {
namespace {

/// A table with the version that every one has.
cJSON* newTable() {
  cJSON* const table = newObject();
  addMember(table, kVersionKey, newNumber(kTableVersion));
  return table;
}

cJSON* levelKeysToJson(const std::vector<std::int32_t>& levelKeys) {
  cJSON* const array = newArray();
  for (const std::int32_t levelKey : levelKeys) {
    addElement(array, newNumber(levelKey));
  }
  return array;
}

/// The number of a port, or an empty text where there is none.
cJSON* portToJson(const PortDict& dict, const std::optional<PortKeyIds>& port,
                  VelDB::Hash& fingerprint) {
  if (!port) {
    fingerprint.hashAdd(std::uint32_t{0});
    return newString("");
  }
  const std::uint64_t packed = dict.packIds(*port);
  fingerprint.hashAdd(packed);
  return newNumberText(static_cast<std::uint32_t>(packed));
}

/// A table without any port has no fingerprint of ports.
cJSON* portsToJson(PackedModel& model, const PackRecord& record) {
  cJSON* const array = newArray();
  if (!record.ports.empty()) {
    VelDB::Hash& fingerprint = fingerprintOf(model.fingerprints, kPortKey);
    for (const std::optional<PortKeyIds>& port : record.ports) {
      addElement(array, portToJson(model.portDict, port, fingerprint));
    }
  }
  return array;
}

/// Everything of a record but its name, its categories and its ports.
cJSON* fieldsToJson(const LogicalIORecord& record) {
  cJSON* const object = newObject();
  addMember(object, kIdKey, newNumberText(record.id));
  if (!record.tally.empty()) {
    addMember(object, kTallyKey, newStringReference(record.tally));
  }
  if (record.redirect != kNoRedirect) {
    addMember(object, kRedirectKey, newNumberText(record.redirect));
  }
  if (!record.description.empty()) {
    addMember(object, kDescriptionKey, newStringReference(record.description));
  }
  return object;
}

cJSON* categoriesToJson(const std::vector<CatEntry>& categories) {
  cJSON* const array = newArray();
  for (const CatEntry& entry : categories) {
    addElement(array, entry.isText ? newStringReference(entry.text) : newNumberText(entry.number));
  }
  return array;
}

/// [id, value]
void addPair(cJSON* array, std::int32_t id, cJSON* value) {
  cJSON* const pair = addElement(array, newArray());
  addElement(pair, newNumberText(id));
  addElement(pair, value);
}

/// The table of a side file, with one fingerprint.
cJSON* newSideTable(const PackedModel& model, const char* fingerprint) {
  cJSON* const table = newTable();
  addMember(table, kHashKey, newNumber(fingerprintValue(model.fingerprints, fingerprint)));
  return table;
}

}  // namespace

cJSON* recordsToJson(PackedModel& model) {
  cJSON* const array = newArray();
  for (const PackRecord& record : model.records) {
    cJSON* const object = addElement(array, fieldsToJson(record.fields));
    addMember(object, kPortKey, portsToJson(model, record));
  }
  return array;
}

cJSON* portsFileToJson(const PackedModel& model, cJSON* records) {
  cJSON* const table = newTable();
  addMember(table, kPortDictKey, model.portDict.toJson());
  addMember(table, kLevelKeysKey, levelKeysToJson(model.levelKeys));
  addMember(table, kHashKey, labelMapToJson(valuesOf(model.fingerprints)));
  addMember(table, kLogicalIOKey, records);
  return newObject(model.outputKey.c_str(), table);
}

std::string labelsText(const PackedModel& model) {
  return printed(buildCJson([&] {
    cJSON* const table = newSideTable(model, kNameKey);
    cJSON* const labels = addMember(table, kLabelsKey, newArray());
    for (const PackRecord& record : model.records) {
      addPair(labels, record.fields.id, newStringReference(record.fields.name));
    }
    return newObject((model.outputKey + kLabelsTable).c_str(), table);
  }));
}

std::string categoriesText(const PackedModel& model) {
  return printed(buildCJson([&] {
    cJSON* const table = newSideTable(model, kCategoryKey);
    cJSON* const list = addMember(table, kLegacyCategoriesKey, newArray());
    for (const PackRecord& record : model.records) {
      if (!record.fields.categories.empty()) {
        addPair(list, record.fields.id, categoriesToJson(record.fields.categories));
      }
    }
    return newObject((model.outputKey + kLegacyCategoriesTable).c_str(), table);
  }));
}

}  // namespace quenfold
