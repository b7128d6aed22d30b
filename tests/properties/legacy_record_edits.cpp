#include <fmt/core.h>

#include <cstddef>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

#include "properties/legacy_edits.h"
#include "properties/pick.h"

namespace quenfold::properties {
namespace {

using generator::Random;
using Told = std::vector<ToldDifference>;

/// One record of a table, and how it is meant.
struct PickedRecord {
  std::string file;
  PlainJson* entry;
  const MeantRecord* meant;

  /// As differences name it.
  [[nodiscard]] std::string place() const {
    return fmt::format("{} {} \"{}\"", file, meant->id, meant->fields.at("name"));
  }

  [[nodiscard]] PlainJson& member(const std::string& name, const char* otherwise) const {
    PlainJson* const found = entry->find(name);
    return found != nullptr ? *found
                            : entry->members.emplace_back(name, parsePlainJson(otherwise)).second;
  }

  [[nodiscard]] PlainJson& ports() const {
    return member(entry->find("val") != nullptr ? "val" : "oid", "[]");
  }
};

std::optional<PickedRecord> pickRecord(LegacyFiles& database, Random& random) {
  std::vector<PickedRecord> records;
  for (const auto& [file, meant] : database.meaning.tables) {
    const TableShape& shape = kTableShapes.at(file == kTableShapes.front().file ? 0 : 1);
    PlainJson* const table = database.files.at(file).findAnyCase(shape.tableKey);
    std::vector<PlainJson>& entries = table->findAnyCase(shape.entriesKey)->elements;
    for (std::size_t place = 0; place < entries.size(); ++place) {
      records.push_back({file, &entries[place], &meant[place]});
    }
  }
  return records.empty() ? std::nullopt : std::optional(records[pickPlace(records, random)]);
}

Told editText(LegacyFiles& database, Random& random, const std::string& member) {
  const std::optional<PickedRecord> record = pickRecord(database, random);
  if (!record) {
    return {};
  }
  record->member(member, "\"\"").text = "Edited";
  return {{fmt::format("record-{}-changed", member), record->file, record->place(),
           record->meant->fields.at(member), "Edited"}};
}

Told editName(LegacyFiles& database, Random& random) { return editText(database, random, "name"); }

Told editTally(LegacyFiles& database, Random& random) {
  return editText(database, random, "tally");
}

Told editDescription(LegacyFiles& database, Random& random) {
  return editText(database, random, "description");
}

Told editRedirect(LegacyFiles& database, Random& random) {
  const std::optional<PickedRecord> record = pickRecord(database, random);
  if (!record) {
    return {};
  }
  record->member("redirect", "1").text = "4321";
  return {{"record-redirect-changed", record->file, record->place(),
           record->meant->fields.at("redirect"), "4321"}};
}

Told editCategory(LegacyFiles& database, Random& random) {
  const std::optional<PickedRecord> record = pickRecord(database, random);
  if (!record) {
    return {};
  }
  std::vector<PlainJson>& categories = record->member("category", "[]").elements;
  if (categories.empty()) {
    categories.push_back(parsePlainJson("\"\""));
  }
  PlainJson& first = categories.front();
  const std::string before = std::exchange(first, parsePlainJson("\"Edited\"")).text;
  return {
      {"record-category-changed", record->file, record->place() + " category 1", before, "Edited"}};
}

std::optional<std::string> pickPortName(const LegacyFiles& database, Random& random) {
  const std::vector<MeantPort>& ports = database.meaning.ports;
  return ports.empty() ? std::nullopt : std::optional(ports[pickPlace(ports, random)].name);
}

Told editPort(LegacyFiles& database, Random& random) {
  const std::optional<PickedRecord> record = pickRecord(database, random);
  const std::optional<std::string> port = pickPortName(database, random);
  // A port with text behind its number has no key that a record could have.
  if (!record || !port || record->ports().elements.empty() ||
      port->compare(port->find(']') + 1, 1, ".") != 0) {
    return {};
  }
  std::vector<PlainJson>& ports = record->ports().elements;
  const std::size_t position = pickPlace(ports, random);
  const std::string before = std::exchange(ports[position].text, *port);
  const std::set<std::string> meant = database.meaning.portsOf(before);
  const std::string from = meant.empty() ? std::string() : *meant.begin();
  if (from == *port) {
    return {};
  }
  return {{"record-port-changed", record->file,
           fmt::format("{} port {}", record->place(), position + 1), from, *port}};
}

Told editId(LegacyFiles& database, Random& random) {
  const std::optional<PickedRecord> record = pickRecord(database, random);
  if (!record) {
    return {};
  }
  record->entry->find("id")->text = "123456";
  return {
      {"record-removed", record->file, record->place(), "", ""},
      {"record-added", record->file,
       fmt::format("{} 123456 \"{}\"", record->file, record->meant->fields.at("name")), "", ""}};
}

Told removeTable(LegacyFiles& database, Random& random) {
  if (database.meaning.tables.empty()) {
    return {};
  }
  auto table = database.meaning.tables.begin();
  std::advance(table, pickPlace(database.meaning.tables, random));
  database.files.erase(table->first);
  return {{"table-removed", table->first, table->first, "", ""}};
}

Told addTable(LegacyFiles& database, Random& /*random*/) {
  if (database.files.count("sources.json") != 0) {
    return {};
  }
  database.files.emplace("sources.json",
                         parsePlainJson(R"({"LogicalSources":{"LogicalSource":[]}})"));
  return {{"table-added", "sources.json", "sources.json", "", ""}};
}

}  // namespace

std::vector<LegacyEdit> recordEdits() {
  return {
      {"the name of a record", true, editName},
      {"the tally of a record", true, editTally},
      {"the description of a record", true, editDescription},
      {"the redirect of a record", true, editRedirect},
      {"a category of a record", true, editCategory},
      {"a port of a record", true, editPort},
      {"the id of a record", true, editId},
      {"a table removed", true, removeTable},
      {"a table added", true, addTable},
  };
}

}  // namespace quenfold::properties
