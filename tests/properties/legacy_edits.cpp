#include "properties/legacy_edits.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

namespace quenfold::properties {
namespace {

using generator::Random;
using Told = std::vector<ToldDifference>;

constexpr const char* kMatrices = "matrices.json";

template <typename Items>
std::size_t pickPlace(const Items& items, Random& random) {
  return random.below(static_cast<std::uint32_t>(items.size()));
}

std::vector<PlainJson>& matricesIn(LegacyFiles& database) {
  return database.files.at(kMatrices).find("Config")->find("Matrices")->elements;
}

/// One port entry of a matrix; none in a database without ports.
struct PickedPort {
  std::vector<PlainJson>* ports;
  std::size_t place;

  [[nodiscard]] PlainJson& entry() const { return ports->at(place); }
  [[nodiscard]] std::string& name() const { return entry().find("port")->text; }
};

std::optional<PickedPort> pickPort(LegacyFiles& database, Random& random) {
  std::vector<PickedPort> ports;
  for (PlainJson& matrix : matricesIn(database)) {
    std::vector<PlainJson>& entries = matrix.find("ports")->elements;
    for (std::size_t place = 0; place < entries.size(); ++place) {
      ports.push_back({&entries, place});
    }
  }
  return ports.empty() ? std::nullopt : std::optional(ports[pickPlace(ports, random)]);
}

Told editLabel(LegacyFiles& database, Random& random) {
  const std::optional<PickedPort> port = pickPort(database, random);
  if (!port) {
    return {};
  }
  std::string& label = port->entry().find("label")->text;
  const std::string before = label == port->name() ? "" : label;
  label = "Edited";
  return {{"port-label-changed", kMatrices, port->name(), before, label}};
}

Told removePort(LegacyFiles& database, Random& random) {
  const std::optional<PickedPort> port = pickPort(database, random);
  if (!port) {
    return {};
  }
  Told told = {{"port-removed", kMatrices, port->name(), "", ""}};
  port->ports->erase(port->ports->begin() + static_cast<std::ptrdiff_t>(port->place));
  return told;
}

/// It keeps its label.
Told renamePort(LegacyFiles& database, Random& random) {
  const std::optional<PickedPort> port = pickPort(database, random);
  if (!port) {
    return {};
  }
  const std::string before = port->name();
  PlainJson& label = *port->entry().find("label");
  port->name() = before + "77";
  label.text = label.text == before ? port->name() : label.text;
  return {{"port-removed", kMatrices, before, "", ""},
          {"port-added", kMatrices, port->name(), "", ""}};
}

Told editSerial(LegacyFiles& database, Random& random) {
  std::vector<PlainJson>& matrices = matricesIn(database);
  if (matrices.empty()) {
    return {};
  }
  PlainJson& matrix = matrices[pickPlace(matrices, random)];
  const std::string before = std::exchange(matrix.find("serialnumber")->text, "Edited");
  return {{"matrix-serial-changed", kMatrices, matrix.find("name")->text, before, "Edited"}};
}

Told renameMatrix(LegacyFiles& database, Random& random) {
  std::vector<PlainJson>& matrices = matricesIn(database);
  if (matrices.empty()) {
    return {};
  }
  std::string& name = matrices[pickPlace(matrices, random)].find("name")->text;
  const std::string before = std::exchange(name, name + ".edited");
  return {{"matrix-removed", kMatrices, before, "", ""}, {"matrix-added", kMatrices, name, "", ""}};
}

Told movePort(LegacyFiles& database, Random& random) {
  const std::optional<PickedPort> port = pickPort(database, random);
  std::vector<PlainJson>& matrices = matricesIn(database);
  if (!port || matrices.size() < 2) {
    return {};
  }
  const bool fromFirst = port->ports == &matrices.front().find("ports")->elements;
  PlainJson& target = fromFirst ? matrices.back() : matrices.front();
  const auto source = std::find_if(matrices.begin(), matrices.end(), [&](PlainJson& matrix) {
    return &matrix.find("ports")->elements == port->ports;
  });
  Told told = {{"port-matrix-changed", kMatrices, port->name(), source->find("name")->text,
                target.find("name")->text}};
  target.find("ports")->elements.push_back(port->entry());
  port->ports->erase(port->ports->begin() + static_cast<std::ptrdiff_t>(port->place));
  return told;
}

/// The matrices of one device that has a serial number; none in a database without.
struct PickedDevice {
  std::string label;
  std::vector<PlainJson*> matrices;

  [[nodiscard]] std::string serial() const { return matrices.front()->find("serialnumber")->text; }
};

std::optional<PickedDevice> pickDevice(LegacyFiles& database, Random& random) {
  std::map<std::string, PickedDevice> devices;
  for (PlainJson& matrix : matricesIn(database)) {
    const std::string& name = matrix.find("name")->text;
    const std::string label = name.substr(0, name.find('.'));
    if (!label.empty() && !matrix.find("serialnumber")->text.empty()) {
      devices[label].label = label;
      devices[label].matrices.push_back(&matrix);
    }
  }
  if (devices.empty()) {
    return std::nullopt;
  }
  return std::next(devices.begin(), static_cast<std::ptrdiff_t>(pickPlace(devices, random)))
      ->second;
}

Told editDeviceSerial(LegacyFiles& database, Random& random) {
  const std::optional<PickedDevice> device = pickDevice(database, random);
  if (!device) {
    return {};
  }
  Told told = {{"device-serial-changed", kMatrices, device->label, device->serial(), "Edited"}};
  for (PlainJson* const matrix : device->matrices) {
    matrix->find("serialnumber")->text = "Edited";
  }
  return told;
}

Told renameDevice(LegacyFiles& database, Random& random) {
  const std::optional<PickedDevice> device = pickDevice(database, random);
  if (!device) {
    return {};
  }
  for (PlainJson* const matrix : device->matrices) {
    matrix->find("name")->text.replace(0, device->label.size(), "Edited");
  }
  return {{"device-removed", kMatrices, device->label, "", ""},
          {"device-added", kMatrices, "Edited", "", ""}};
}

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
    const std::string kind = file == "sources.json" ? "LogicalSource" : "LogicalDestination";
    PlainJson* const root = database.files.at(file).findAnyCase(kind + "s");
    std::vector<PlainJson>& entries = root->findAnyCase(kind)->elements;
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

Told editPort(LegacyFiles& database, Random& random) {
  const std::optional<PickedRecord> record = pickRecord(database, random);
  const std::optional<PickedPort> port = pickPort(database, random);
  if (!record || !port || record->ports().elements.empty()) {
    return {};
  }
  std::vector<PlainJson>& ports = record->ports().elements;
  const std::size_t position = pickPlace(ports, random);
  const std::string before = std::exchange(ports[position].text, port->name());
  const std::set<std::string> meant = database.meaning.portsOf(before);
  const std::string from = meant.empty() ? std::string() : *meant.begin();
  if (from == port->name()) {
    return {};
  }
  return {{"record-port-changed", record->file,
           fmt::format("{} port {}", record->place(), position + 1), from, port->name()}};
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

const std::vector<LegacyEdit>& legacyEdits() {
  static const std::vector<LegacyEdit> kEdits = {
      {"the label of a port", false, editLabel},
      {"a port removed", false, removePort},
      {"a port renamed", false, renamePort},
      {"the serial number of a matrix", false, editSerial},
      {"the name of a matrix", false, renameMatrix},
      {"a port in another matrix", false, movePort},
      {"the serial number of a device", false, editDeviceSerial},
      {"the label of a device", false, renameDevice},
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
  return kEdits;
}

}  // namespace quenfold::properties
