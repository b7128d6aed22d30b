#include <fmt/core.h>

#include <cstddef>
#include <set>
#include <utility>

#include "properties/packed_edits.h"
#include "properties/pick.h"

namespace quenfold::properties {
namespace {

using database::Kind;
using generator::Random;
using Expectations = std::vector<Expected>;

/// The names of one table's files, of which Ports.json is there.
struct TableFiles {
  std::string ports;
  std::string labels;
  std::string categories;
};

/// One of the tables at random; without names where the set has none.
TableFiles pickTable(const PackedFiles& files, Random& random) {
  std::vector<TableFiles> tables;
  for (const std::string table : {"logicalSources", "logicalDestinations"}) {
    if (files.count(table + "Ports.json") != 0) {
      tables.push_back(
          {table + "Ports.json", table + "Labels.json", table + "LegacyCategories.json"});
    }
  }
  return tables.empty() ? TableFiles() : pick(tables, random);
}

/// Records that have such a member.
std::vector<PlainJson*> recordsWith(PackedFiles& files, const TableFiles& table,
                                    std::string_view member) {
  std::vector<PlainJson*> records;
  if (!table.ports.empty()) {
    for (PlainJson& record : contentsOf(files, table.ports).find("logicalIO")->elements) {
      if (record.find(member) != nullptr) {
        records.push_back(&record);
      }
    }
  }
  return records;
}

/// The pairs of an id and a value in a file beside Ports.json; none for a file without a name.
std::vector<PlainJson>& pairsIn(PackedFiles& files, const std::string& file, const char* list) {
  static std::vector<PlainJson> none;
  return file.empty() ? none : contentsOf(files, file).find(list)->elements;
}

Expectations takeLabels(PackedFiles& files, const PackedFiles& others, Random& random) {
  const TableFiles table = pickTable(files, random);
  const auto other = others.find(table.labels);
  if (table.labels.empty() || other == others.end()) {
    return {};
  }
  const auto namesIn = [](const PlainJson& file) {
    std::string names;
    for (const PlainJson& pair : file.members.front().second.find("labels")->elements) {
      names += pair.elements.at(1).text;
    }
    return names;
  };
  PlainJson& own = files.at(table.labels);
  const bool same = namesIn(own) == namesIn(other->second);
  own = other->second;
  return same ? Expectations()
              : Expectations{{Kind::kFingerprintDiffers, table.ports, "hash.name: "}};
}

Expectations takePorts(PackedFiles& files, const PackedFiles& others, Random& random) {
  const TableFiles table = pickTable(files, random);
  const auto other = others.find(table.ports);
  if (table.ports.empty() || other == others.end()) {
    return {};
  }
  const auto hashIn = [](const PlainJson& file) {
    const PlainJson* const hash = file.members.front().second.find("hash")->find("name");
    return hash == nullptr ? std::string() : hash->text;
  };
  PlainJson& own = files.at(table.ports);
  const bool same = hashIn(own) == hashIn(other->second);
  own = other->second;
  return same ? Expectations()
              : Expectations{{Kind::kFingerprintDiffers, table.ports, "hash.name: "}};
}

/// The stored fingerprints that the files can prove.
std::set<std::string> comparedFields(PackedFiles& files, const TableFiles& table) {
  std::set<std::string> fields = {"id", "tally", "description", "port", "name", "category"};
  const std::size_t records = recordsWith(files, table, "id").size();
  if (recordsWith(files, table, "redirect").size() == records) {
    fields.insert("redirect");
  }
  return fields;
}

Expectations editHash(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const TableFiles table = pickTable(files, random);
  if (table.ports.empty()) {
    return {};
  }
  const std::set<std::string> compared = comparedFields(files, table);
  std::vector<std::pair<std::string, PlainJson*>> fields;
  for (auto& [name, value] : contentsOf(files, table.ports).find("hash")->members) {
    if (compared.count(name) != 0) {
      fields.emplace_back(name, &value);
    }
  }
  if (fields.empty()) {
    return {};
  }
  const auto& [name, value] = pick(fields, random);
  addTo(*value, value->text == "0" ? 1 : -1);
  return {{Kind::kFingerprintDiffers, table.ports, "hash." + name + ": "}};
}

Expectations editSideHash(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const TableFiles table = pickTable(files, random);
  if (table.ports.empty()) {
    return {};
  }
  const std::string& file = random.percent(50) ? table.labels : table.categories;
  PlainJson& hash = *contentsOf(files, file).find("hash");
  addTo(hash, hash.text == "0" ? 1 : -1);
  return {{Kind::kFingerprintDiffers, file, "hash: "}};
}

Expectations editNameId(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const TableFiles table = pickTable(files, random);
  std::vector<PlainJson>& names = pairsIn(files, table.labels, "labels");
  if (names.empty()) {
    return {};
  }
  PlainJson& id = pick(names, random).elements.front();
  const std::string before = id.text;
  id.text = "123456";
  return {{Kind::kNameMissing, table.ports, table.ports + " " + before},
          {Kind::kNameUnused, table.labels, table.labels + " 123456"}};
}

Expectations editName(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const TableFiles table = pickTable(files, random);
  std::vector<PlainJson>& names = pairsIn(files, table.labels, "labels");
  if (names.empty()) {
    return {};
  }
  pick(names, random).elements.at(1).text += "x";
  return {{Kind::kFingerprintDiffers, table.ports, "hash.name: "},
          {Kind::kFingerprintDiffers, table.labels, "hash: "}};
}

Expectations editCategoryId(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const TableFiles table = pickTable(files, random);
  std::vector<PlainJson>& lists = pairsIn(files, table.categories, "legacyCategories");
  if (lists.empty()) {
    return {};
  }
  pick(lists, random).elements.front().text = "123456";
  return {{Kind::kCategoryUnused, table.categories, table.categories + " 123456"}};
}

Expectations addCategory(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const TableFiles table = pickTable(files, random);
  std::vector<PlainJson>& lists = pairsIn(files, table.categories, "legacyCategories");
  if (lists.empty()) {
    return {};
  }
  pick(lists, random).elements.at(1).elements.push_back(parsePlainJson("\"more\""));
  return {{Kind::kFingerprintDiffers, table.ports, "hash.category: "},
          {Kind::kFingerprintDiffers, table.categories, "hash: "}};
}

Expectations repeatId(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const TableFiles table = pickTable(files, random);
  const std::vector<PlainJson*> records = recordsWith(files, table, "id");
  if (records.size() < 2) {
    return {};
  }
  const std::string id = records.front()->find("id")->text;
  records.back()->find("id")->text = id;
  return {{Kind::kIdRepeated, table.ports, table.ports + " " + id},
          {Kind::kFingerprintDiffers, table.ports, "hash.id: "}};
}

/// The ports of all records that are numbers.
std::vector<PlainJson*> portNumbers(PackedFiles& files, const TableFiles& table) {
  std::vector<PlainJson*> numbers;
  for (PlainJson* const record : recordsWith(files, table, "port")) {
    for (PlainJson& port : record->find("port")->elements) {
      if (!port.isText()) {
        numbers.push_back(&port);
      }
    }
  }
  return numbers;
}

Expectations editPort(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const TableFiles table = pickTable(files, random);
  const std::vector<PlainJson*> ports = portNumbers(files, table);
  if (ports.empty()) {
    return {};
  }
  addTo(*pick(ports, random), 1);
  return {{Kind::kFingerprintDiffers, table.ports, "hash.port: "}};
}

Expectations dropFromDictionary(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const TableFiles table = pickTable(files, random);
  if (portNumbers(files, table).empty()) {
    return {};
  }
  PlainJson& maps = *contentsOf(files, table.ports).find("portDict")->find("refMaps");
  const char* const field = random.percent(50) ? "type" : "port_prefix";
  std::vector<PlainJson>& pairs = maps.find(field)->elements;
  const std::uint32_t place = random.below(static_cast<std::uint32_t>(pairs.size()));
  pairs.erase(pairs.begin() + static_cast<std::ptrdiff_t>(place));
  return {{Kind::kPortUndefined, table.ports, table.ports + " "}};
}

Expectations editDictionaryDevice(PackedFiles& files, const PackedFiles& /*others*/,
                                  Random& random) {
  const TableFiles table = pickTable(files, random);
  if (portNumbers(files, table).empty()) {
    return {};
  }
  PlainJson& maps = *contentsOf(files, table.ports).find("portDict")->find("refMaps");
  pick(maps.find("device")->elements, random).elements.at(1).text = "Elsewhere";
  return {{Kind::kDeviceUnknown, table.ports, "Elsewhere"}};
}

Expectations editText(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const TableFiles table = pickTable(files, random);
  const std::string member = random.percent(50) ? "tally" : "description";
  const std::vector<PlainJson*> records = recordsWith(files, table, member);
  if (records.empty()) {
    return {};
  }
  pick(records, random)->find(member)->text += "x";
  return {{Kind::kFingerprintDiffers, table.ports, "hash." + member + ": "}};
}

}  // namespace

std::vector<PackedEdit> tableEdits() {
  return {
      {"names of another set", takeLabels},
      {"ports of another set", takePorts},
      {"a stored fingerprint changed", editHash},
      {"the fingerprint of a side file changed", editSideHash},
      {"the id of a name changed", editNameId},
      {"a name changed", editName},
      {"the id of categories changed", editCategoryId},
      {"a category added", addCategory},
      {"an id repeated", repeatId},
      {"a packed port changed", editPort},
      {"an entry of a dictionary removed", dropFromDictionary},
      {"a device of a dictionary renamed", editDictionaryDevice},
      {"a text of a record changed", editText},
  };
}

}  // namespace quenfold::properties
