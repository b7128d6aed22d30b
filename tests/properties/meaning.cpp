#include "properties/meaning.h"

#include <fmt/core.h>

#include <cstdlib>
#include <filesystem>

#include "properties/plain_json.h"

namespace quenfold::properties {
namespace {

std::string textOf(const PlainJson& object, std::string_view name) {
  const PlainJson* const member = object.find(name);
  return member == nullptr || !member->isText() ? std::string() : member->text;
}

/// One text for one number, however it is written.
std::string numberText(const std::string& text) {
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  return end != text.c_str() && *end == '\0' ? fmt::format("{}", number + 0.0) : text;
}

std::string fieldText(const PlainJson& value) {
  return value.isText() ? value.text : "JSON " + jsonOf(value);
}

void readPorts(const PlainJson& matrix, const MeantMatrix& meant, Meaning& meaning) {
  const PlainJson* const ports = matrix.find("ports");
  if (ports == nullptr) {
    return;
  }
  for (const PlainJson& entry : ports->elements) {
    MeantPort port{textOf(entry, "port"), textOf(entry, "label"), meant};
    if (port.label == port.name) {
      port.label.clear();
    }
    meaning.portsNamed[port.name].insert(port.name);
    if (!port.label.empty()) {
      meaning.portsNamed[port.label].insert(port.name);
    }
    meaning.ports.push_back(std::move(port));
  }
}

void readMatrices(const PlainJson& root, Meaning& meaning) {
  const PlainJson* const config = root.find("Config");
  const PlainJson* const matrices = config == nullptr ? nullptr : config->find("Matrices");
  if (matrices == nullptr) {
    return;
  }
  for (const PlainJson& matrix : matrices->elements) {
    if (matrix.kind == PlainJson::Kind::kObject) {
      meaning.matrices.push_back({textOf(matrix, "name"), textOf(matrix, "serialnumber")});
      readPorts(matrix, meaning.matrices.back(), meaning);
    }
  }
}

/// A category counts as its text, number or not; empty ones at the end count for nothing.
std::string categoriesText(const PlainJson& list) {
  if (list.kind != PlainJson::Kind::kArray) {
    return "JSON " + jsonOf(list);
  }
  std::string text;
  std::string told;
  for (const PlainJson& item : list.elements) {
    text += inQuotes(item.isText() ? item.text : numberText(item.text)) + ",";
    if (!item.isText() || !item.text.empty()) {
      told = text;
    }
  }
  return told;
}

std::vector<std::string> portTexts(const PlainJson* list) {
  std::vector<std::string> ports;
  std::size_t told = 0;
  for (const PlainJson& item : list == nullptr ? std::vector<PlainJson>() : list->elements) {
    const bool empty = item.isText() ? item.text.empty() : item.text == "null";
    ports.push_back(empty ? std::string() : fieldText(item));
    told = empty ? told : ports.size();
  }
  ports.resize(told);
  return ports;
}

MeantRecord readRecord(const PlainJson& entry, const char* portsKey) {
  MeantRecord record;
  record.fields = {{"name", ""}, {"description", ""}, {"tally", ""}, {"category", ""}};
  for (auto& [name, value] : record.fields) {
    if (const PlainJson* const member = entry.find(name)) {
      value = name == "category" ? categoriesText(*member) : fieldText(*member);
    }
  }
  const PlainJson* const redirect = entry.find("redirect");
  record.fields["redirect"] = redirect == nullptr ? "1" : numberText(jsonOf(*redirect));
  const PlainJson* const id = entry.find("id");
  record.id = id == nullptr ? std::string() : numberText(jsonOf(*id));
  record.ports = portTexts(entry.find(portsKey));
  return record;
}

void readTable(const std::string& folder, const TableShape& shape, Meaning& meaning) {
  const std::string path = folder + "/" + shape.file;
  if (!std::filesystem::exists(path)) {
    return;
  }
  const PlainJson root = readPlainJson(path);
  std::vector<MeantRecord>& records = meaning.tables[shape.file];
  const PlainJson* const table = root.findAnyCase(shape.tableKey);
  const PlainJson* const entries =
      table == nullptr ? nullptr : table->findAnyCase(shape.entriesKey);
  if (entries != nullptr) {
    for (const PlainJson& entry : entries->elements) {
      records.push_back(readRecord(entry, shape.portsKey));
    }
  }
}

}  // namespace

std::set<std::string> Meaning::portsOf(const std::string& text) const {
  if (text.empty()) {
    return {};
  }
  const auto named = portsNamed.find(text);
  return named == portsNamed.end() ? std::set<std::string>{text} : named->second;
}

Meaning readMeaning(const std::string& folder) {
  Meaning meaning;
  readMatrices(readPlainJson(folder + "/matrices.json"), meaning);
  for (const TableShape& shape : kTableShapes) {
    readTable(folder, shape, meaning);
  }
  return meaning;
}

}  // namespace quenfold::properties
