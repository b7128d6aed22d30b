#include "generator/logical_text.h"

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace quenfold::generator {
namespace {

/// What the two tables are called, from the root down.
struct TableNames {
  std::string_view table;
  std::string_view records;
  std::string_view ports;
};

TableNames namesOf(Direction direction) {
  if (direction == Direction::source) {
    return {"LogicalSources", "LogicalSource", "val"};
  }
  return {"LogicalDestinations", "LogicalDestination", "oid"};
}

void appendKey(std::string& out, std::string_view name) {
  out.append("\t\t\t\t\"").append(name).append("\":\t");
}

void appendTextMember(std::string& out, std::string_view name, std::string_view text) {
  appendKey(out, name);
  appendJsonString(out, text);
  out += ",\n";
}

void appendNumberMember(std::string& out, std::string_view name, std::int32_t number) {
  appendKey(out, name);
  out += fmt::format("{},\n", number);
}

std::string textOf(const Plant& plant, const LevelPort& port) {
  if (port.byLabel) {
    return plant.labels[port.entry->label];
  }
  std::string key;
  if (port.entry != nullptr) {
    appendPortKey(key, plant, *port.entry);
  }
  return key;
}

/// `text` gives the string of one item.
template <typename Items, typename Text>
void appendArrayMember(std::string& out, std::string_view name, const Items& items, Text text) {
  appendKey(out, name);
  std::string_view separator = "[";
  for (const auto& item : items) {
    out += separator;
    appendJsonString(out, text(item));
    separator = ", ";
  }
  out += "],\n";
}

void appendRecord(std::string& out, const Plant& plant, const LogicalRecord& record,
                  std::string_view portsName) {
  out += "{\n";
  appendTextMember(out, "name", record.name);
  appendNumberMember(out, "id", record.id);
  appendNumberMember(out, "key", 0);
  appendArrayMember(out, portsName, record.levels,
                    [&](const LevelPort& port) { return textOf(plant, port); });
  appendTextMember(out, "description", record.description);
  appendArrayMember(out, "category", record.category,
                    [](const std::string& entry) -> const std::string& { return entry; });
  appendTextMember(out, "tally", record.tally);
  appendNumberMember(out, "redirect", record.redirect);
  out.replace(out.size() - 2, 2, "\n\t\t\t}");
}

std::string tableHead(const TableNames& names, std::uint32_t levels) {
  std::string head = fmt::format("{{\n\t\"{}\":\t{{\n\t\t\"version\":\t10,\n", names.table);
  std::string_view separator = "\t\t\"levelKeys\":\t[";
  for (std::uint32_t level = 1; level <= levels; ++level) {
    head += fmt::format("{}{}", separator, level);
    separator = ", ";
  }
  head += fmt::format("],\n\t\t\"{}\":\t[", names.records);
  return head;
}

}  // namespace

void writeLogicalTable(const Plant& plant, const LogicalTable& table, const TextSink& sink) {
  const TableNames names = namesOf(table.direction);
  sink(tableHead(names, table.levels));
  std::string text;
  for (const LogicalRecord& record : table.records) {
    text = &record == &table.records.front() ? "" : ", ";
    appendRecord(text, plant, record, names.ports);
    sink(text);
  }
  sink("]\n\t}\n}");
}

}  // namespace quenfold::generator
