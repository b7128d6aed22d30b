#include "logicalio/packed_writer.h"

#include "json/formatted_json.h"
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

/// The two levels that every document has: the table's key, then the table's members.
FormattedJson beginDocument(std::string_view tableKey) {
  FormattedJson json;
  json.beginObject();
  json.key(tableKey);
  json.beginObject();
  return json;
}

std::string endDocument(FormattedJson& json) {
  json.endObject();
  json.endObject();
  return json.take();
}

void writeVersion(FormattedJson& json) {
  json.key(kVersionKey);
  json.number(kTableVersion);
}

void writeLevelKeys(FormattedJson& json, const std::vector<std::int32_t>& levelKeys) {
  json.key(kLevelKeysKey);
  json.beginArray();
  for (const std::int32_t levelKey : levelKeys) {
    json.number(levelKey);
  }
  json.endArray();
}

void writeFingerprints(FormattedJson& json, const FingerprintValues& values) {
  json.key(kHashKey);
  json.beginObject();
  for (const auto& [name, value] : values) {
    json.key(name);
    json.number(value);
  }
  json.endObject();
}

using PackedPort = std::vector<std::uint32_t>::const_iterator;

/// `next` is the record's first packed number, and then the one after its last.
void writePorts(FormattedJson& json, const NumberedPorts& ports, PackedPort& next) {
  json.key(kPortKey);
  json.beginArray();
  for (const std::optional<PortKeyIds>& port : ports) {
    if (port) {
      json.number(*next++);
    } else {
      json.string("");
    }
  }
  json.endArray();
}

/// Everything of a record but its name, its categories and its ports.
void writeFields(FormattedJson& json, const LogicalIORecord& record) {
  json.key(kIdKey);
  json.number(record.id);
  if (!record.tally.empty()) {
    json.key(kTallyKey);
    json.string(record.tally);
  }
  if (record.redirect != kNoRedirect) {
    json.key(kRedirectKey);
    json.number(record.redirect);
  }
  if (!record.description.empty()) {
    json.key(kDescriptionKey);
    json.string(record.description);
  }
}

void writeCategories(FormattedJson& json, const std::vector<CatEntry>& categories) {
  json.beginArray();
  for (const CatEntry& entry : categories) {
    if (entry.isText) {
      json.string(entry.text);
    } else {
      json.number(entry.number);
    }
  }
  json.endArray();
}

/// The head that both side files share: version and one fingerprint.
void writeSideHead(FormattedJson& json, const PackedModel& model, const char* fingerprint) {
  writeVersion(json);
  json.key(kHashKey);
  json.number(fingerprintValue(model.fingerprints, fingerprint));
}

}  // namespace

std::vector<std::uint32_t> packPorts(PackedModel& model) {
  std::vector<std::uint32_t> packed;
  for (const NumberedPorts& ports : model.ports) {
    if (ports.empty()) {
      continue;
    }
    VelDB::Hash& fingerprint = fingerprintOf(model.fingerprints, kPortKey);
    for (const std::optional<PortKeyIds>& port : ports) {
      if (port) {
        const std::uint64_t number = model.portDict.packIds(*port);
        fingerprint.hashAdd(number);
        packed.push_back(static_cast<std::uint32_t>(number));
      } else {
        fingerprint.hashAdd(std::uint32_t{0});
      }
    }
  }
  return packed;
}

std::string portsText(const PackedModel& model, const std::vector<std::uint32_t>& packedPorts) {
  FormattedJson json = beginDocument(model.outputKey);
  writeVersion(json);
  json.key(kPortDictKey);
  model.portDict.toJson(json);
  writeLevelKeys(json, model.levelKeys);
  writeFingerprints(json, valuesOf(model.fingerprints));
  json.key(kLogicalIOKey);
  json.beginArray();
  auto next = packedPorts.begin();
  auto ports = model.ports.begin();
  for (const LogicalIORecord& record : model.records) {
    json.beginObject();
    writeFields(json, record);
    writePorts(json, *ports++, next);
    json.endObject();
  }
  json.endArray();
  return endDocument(json);
}

std::string labelsText(const PackedModel& model) {
  FormattedJson json = beginDocument(model.outputKey + kLabelsTable);
  writeSideHead(json, model, kNameKey);
  json.key(kLabelsKey);
  json.beginArray();
  for (const LogicalIORecord& record : model.records) {
    json.beginArray();
    json.number(record.id);
    json.string(record.name);
    json.endArray();
  }
  json.endArray();
  return endDocument(json);
}

std::string categoriesText(const PackedModel& model) {
  FormattedJson json = beginDocument(model.outputKey + kLegacyCategoriesTable);
  writeSideHead(json, model, kCategoryKey);
  json.key(kLegacyCategoriesKey);
  json.beginArray();
  for (const LogicalIORecord& record : model.records) {
    if (!record.categories.empty()) {
      json.beginArray();
      json.number(record.id);
      writeCategories(json, record.categories);
      json.endArray();
    }
  }
  json.endArray();
  return endDocument(json);
}

std::string hashText(const std::string& topLevelKey, const FingerprintValues& values) {
  FormattedJson json = beginDocument(topLevelKey);
  writeFingerprints(json, values);
  return endDocument(json);
}

}  // namespace quenfold
