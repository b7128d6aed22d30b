#include "logicalio/packed_writer.h"

#include "json/cjson_access.h"
#include "json/cjson_tree.h"
#include "logicalio/format.h"

// Layout, in this order of members:
//   <output key>Ports.json              {<output key>: {"version": 10, "portDict": {...},
//                                         "levelKeys": [...], "hash": {<name>: <value>, ...},
//                                         "logicalIO": [{"id", "tally"?, "redirect"?,
//                                                        "description"?, "port": [...]}, ...]}}
//   <output key>Labels.json             {<output key>Labels: {"version": 10, "hash": <value>,
//                                         "labels": [[<id>, <name>], ...]}}
//   <output key>LegacyCategories.json   {<output key>LegacyCategories: {"version": 10,
//                                         "hash": <value>,
//                                         "legacyCategories": [[<id>, [<entry>, ...]], ...]}}
//   <input name>.hash                   {<top-level key>: {"hash": {<name>: <value>, ...}}}

namespace quenfold {
namespace {

/// The document of one table.
cJSON* documentOf(const std::string& key, cJSON* table) {
  cJSON* const document = newObject();
  addMember(document, key.c_str(), table);
  return document;
}

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
cJSON* portToJson(PackedModel& model, const std::optional<PortKeyIds>& port) {
  VelDB::Hash& fingerprint = fingerprintOf(model.fingerprints, kPortKey);
  if (!port) {
    fingerprint.hashAdd(std::uint32_t{0});
    return newString("");
  }
  const std::uint64_t packed = model.portDict.packIds(*port);
  fingerprint.hashAdd(packed);
  return newNumberText(static_cast<std::uint32_t>(packed));
}

cJSON* portsToJson(PackedModel& model, const NumberedPorts& ports) {
  cJSON* const array = newArray();
  for (const std::optional<PortKeyIds>& port : ports) {
    addElement(array, portToJson(model, port));
  }
  return array;
}

/// Everything of a record but its name, its categories and its ports.
cJSON* fieldsToJson(const LogicalIORecord& record) {
  cJSON* const object = newObject();
  addMember(object, kIdKey, newNumber(record.id));
  if (!record.tally.empty()) {
    addMember(object, kTallyKey, newStringReference(record.tally));
  }
  if (record.redirect != kNoRedirect) {
    addMember(object, kRedirectKey, newNumber(record.redirect));
  }
  if (!record.description.empty()) {
    addMember(object, kDescriptionKey, newStringReference(record.description));
  }
  return object;
}

cJSON* categoriesToJson(const std::vector<CatEntry>& categories) {
  cJSON* const array = newArray();
  for (const CatEntry& entry : categories) {
    addElement(array, entry.isText ? newStringReference(entry.text) : newNumber(entry.number));
  }
  return array;
}

/// [id, value]
void addPair(cJSON* array, std::int32_t id, cJSON* value) {
  cJSON* const pair = addElement(array, newArray());
  addElement(pair, newNumber(id));
  addElement(pair, value);
}

/// The table of a side file, with one fingerprint.
cJSON* newSideTable(const PackedModel& model, const char* fingerprint) {
  cJSON* const table = newTable();
  addMember(table, kHashKey, newNumber(fingerprintValue(model.fingerprints, fingerprint)));
  return table;
}

}  // namespace

cJSON* packRecords(PackedModel& model) {
  cJSON* const array = newArray();
  auto ports = model.ports.begin();
  for (const LogicalIORecord& record : model.records) {
    cJSON* const object = addElement(array, fieldsToJson(record));
    addMember(object, kPortKey, portsToJson(model, *ports++));
  }
  return array;
}

cJSON* portsDocument(const PackedModel& model, cJSON* records) {
  cJSON* const table = newTable();
  addMember(table, kPortDictKey, model.portDict.toJson());
  addMember(table, kLevelKeysKey, levelKeysToJson(model.levelKeys));
  addMember(table, kHashKey, labelMapToJson(valuesOf(model.fingerprints)));
  addMember(table, kLogicalIOKey, records);
  return documentOf(model.outputKey, table);
}

std::string labelsText(const PackedModel& model) {
  return printed(buildCJson([&] {
    cJSON* const table = newSideTable(model, kNameKey);
    cJSON* const labels = addMember(table, kLabelsKey, newArray());
    for (const LogicalIORecord& record : model.records) {
      addPair(labels, record.id, newStringReference(record.name));
    }
    return documentOf(model.outputKey + kLabelsTable, table);
  }));
}

std::string categoriesText(const PackedModel& model) {
  return printed(buildCJson([&] {
    cJSON* const table = newSideTable(model, kCategoryKey);
    cJSON* const list = addMember(table, kLegacyCategoriesKey, newArray());
    for (const LogicalIORecord& record : model.records) {
      if (!record.categories.empty()) {
        addPair(list, record.id, categoriesToJson(record.categories));
      }
    }
    return documentOf(model.outputKey + kLegacyCategoriesTable, table);
  }));
}

}  // namespace quenfold
