#include "logicalio/fingerprints.h"

#include "json/cjson_access.h"
#include "json/cjson_tree.h"
#include "logicalio/format.h"

// What is written: {<top-level key>: {"hash": {<name>: <value>, ...}}}, the names
// ascending.

namespace quenfold {

VelDB::Hash& fingerprintOf(Fingerprints& fingerprints, std::string_view name) {
  const auto known = fingerprints.find(name);
  return known != fingerprints.end() ? known->second : fingerprints[std::string(name)];
}

std::uint32_t fingerprintValue(const Fingerprints& fingerprints, std::string_view name) {
  const auto known = fingerprints.find(name);
  return known != fingerprints.end() ? known->second.value() : 0;
}

FingerprintValues valuesOf(const Fingerprints& fingerprints) {
  FingerprintValues values;
  for (const auto& [name, fingerprint] : fingerprints) {
    values.emplace(name, fingerprint.value());
  }
  return values;
}

void addCategories(VelDB::Hash& fingerprint, const std::vector<CatEntry>& categories) {
  for (const CatEntry& entry : categories) {
    if (entry.isText) {
      fingerprint.hashAdd(entry.text);
    } else {
      fingerprint.hashAdd(static_cast<std::uint32_t>(entry.number));
    }
  }
}

FingerprintValues hashLogicalIO(const std::vector<LogicalIORecord>& records) {
  VelDB::Hash name;
  VelDB::Hash id;
  VelDB::Hash description;
  VelDB::Hash tally;
  VelDB::Hash redirect;
  VelDB::Hash category;
  for (const LogicalIORecord& record : records) {
    name.hashAdd(record.name);
    id.hashAdd(static_cast<std::uint32_t>(record.id));
    description.hashAdd(record.description);
    tally.hashAdd(record.tally);
    redirect.hashAdd(static_cast<std::uint32_t>(record.redirect));
    addCategories(category, record.categories);
  }
  return {{kNameKey, name.value()},
          {kIdKey, id.value()},
          {kDescriptionKey, description.value()},
          {kTallyKey, tally.value()},
          {kRedirectKey, redirect.value()},
          {kCategoryKey, category.value()}};
}

std::string hashText(const std::string& topLevelKey, const FingerprintValues& values) {
  return printed(buildCJson([&] {
    cJSON* const table = newObject(kHashKey, labelMapToJson(values));
    return newObject(topLevelKey.c_str(), table);
  }));
}

}  // namespace quenfold
