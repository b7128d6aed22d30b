#include "logicalio/packed_writer.h"

#include <utility>

#include "json/cjson_access.h"
#include "logicalio/keys.h"

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

CJsonHandle documentOf(const std::string& key, CJsonHandle content) {
  CJsonHandle document = cjsonObject();
  addMember(*document, key, std::move(content));
  return document;
}

CJsonHandle packPorts(const LogicalIORecord& record, const PortDict& dict,
                      Fingerprints& fingerprints) {
  CJsonHandle ports = cjsonArray();
  if (record.ports.empty()) {
    return ports;
  }
  VelDB::Hash& fingerprint = fingerprintOf(fingerprints, kPortKey);
  for (const std::string& idKey : record.ports) {
    if (idKey.empty()) {
      fingerprint.hashAdd(std::uint32_t{0});
      addElement(*ports, cjsonString(idKey));
    } else {
      const std::uint64_t packed = dict.packIdKey(idKey);
      fingerprint.hashAdd(packed);
      addElement(*ports, cjsonNumber(static_cast<double>(packed)));
    }
  }
  return ports;
}

/// Everything of a record but its ports, its name and its categories.
CJsonHandle packFields(const LogicalIORecord& record) {
  CJsonHandle entry = cjsonObject();
  addMember(*entry, kIdKey, cjsonNumber(record.id));
  if (!record.tally.empty()) {
    addMember(*entry, kTallyKey, cjsonString(record.tally));
  }
  if (record.redirect != kNoRedirect) {
    addMember(*entry, kRedirectKey, cjsonNumber(record.redirect));
  }
  if (!record.description.empty()) {
    addMember(*entry, kDescriptionKey, cjsonString(record.description));
  }
  return entry;
}

CJsonHandle pairOf(std::int32_t id, CJsonHandle value) {
  CJsonHandle pair = cjsonArray();
  addElement(*pair, cjsonNumber(id));
  addElement(*pair, std::move(value));
  return pair;
}

CJsonHandle categoriesOf(const LogicalIORecord& record) {
  CJsonHandle entries = cjsonArray();
  for (const CatEntry& entry : record.categories) {
    addElement(*entries, entry.isText ? cjsonString(entry.text) : cjsonNumber(entry.number));
  }
  return entries;
}

/// The head that both side files share: version and one fingerprint.
CJsonHandle sideTable(const PackedModel& model, const char* fingerprint) {
  CJsonHandle table = cjsonObject();
  addMember(*table, kVersionKey, cjsonNumber(kTableVersion));
  addMember(*table, kHashKey, cjsonNumber(fingerprintValue(model.fingerprints, fingerprint)));
  return table;
}

}  // namespace

CJsonHandle packRecords(PackedModel& model) {
  CJsonHandle records = cjsonArray();
  for (const LogicalIORecord& record : model.records) {
    CJsonHandle entry = packFields(record);
    addMember(*entry, kPortKey, packPorts(record, model.portDict, model.fingerprints));
    addElement(*records, std::move(entry));
  }
  return records;
}

CJsonHandle portsDocument(const PackedModel& model, CJsonHandle logicalIO) {
  CJsonHandle table = cjsonObject();
  addMember(*table, kVersionKey, cjsonNumber(kTableVersion));
  addMember(*table, kPortDictKey, model.portDict.toJson());
  addMember(*table, kLevelKeysKey, cjsonIntArray(model.levelKeys));
  addMember(*table, kHashKey, labelMapToJson(valuesOf(model.fingerprints)));
  addMember(*table, kLogicalIOKey, std::move(logicalIO));
  return documentOf(model.outputKey, std::move(table));
}

CJsonHandle labelsDocument(const PackedModel& model) {
  CJsonHandle labels = cjsonArray();
  for (const LogicalIORecord& record : model.records) {
    addElement(*labels, pairOf(record.id, cjsonString(record.name)));
  }
  CJsonHandle table = sideTable(model, kNameKey);
  addMember(*table, kLabelsKey, std::move(labels));
  return documentOf(model.outputKey + kLabelsTable, std::move(table));
}

CJsonHandle categoriesDocument(const PackedModel& model) {
  CJsonHandle categories = cjsonArray();
  for (const LogicalIORecord& record : model.records) {
    if (!record.categories.empty()) {
      addElement(*categories, pairOf(record.id, categoriesOf(record)));
    }
  }
  CJsonHandle table = sideTable(model, kCategoryKey);
  addMember(*table, kLegacyCategoriesKey, std::move(categories));
  return documentOf(model.outputKey + kLegacyCategoriesTable, std::move(table));
}

CJsonHandle hashDocument(const std::string& topLevelKey, const FingerprintValues& values) {
  CJsonHandle table = cjsonObject();
  addMember(*table, kHashKey, labelMapToJson(values));
  return documentOf(topLevelKey, std::move(table));
}

}  // namespace quenfold
