#include "logicalio/legacy_writer.h"

#include <algorithm>

#include "app/limits.h"
#include "json/cjson_tree.h"

// What is written, in this order of members:
//   {<top-level key>: {"version": 10, <entries key>: [
//     {"name": <text>, "id": <number>, "key": 0, <ports key>: [<port>, ...], "description": <text>,
//      "category": [<six texts>], "tally": <text>, "redirect": <number>}, ...]}}

namespace quenfold {
namespace {

/// The texts stay in the records: a document refers to them.
cJSON* portsToJson(const LogicalIORecord& record, std::size_t levelCount) {
  cJSON* const array = newArray();
  for (const std::string& port : record.ports) {
    addElement(array, newStringReference(port));
  }
  for (std::size_t i = record.ports.size(); i < levelCount; ++i) {
    addElement(array, newString(""));
  }
  return array;
}

cJSON* categoriesToJson(const LogicalIORecord& record) {
  cJSON* const array = newArray();
  for (std::size_t i = 0; i < kLegacyCategoryCount; ++i) {
    const bool given = i < record.categories.size();
    addElement(array, newString(given ? catEntryText(record.categories[i]).c_str() : ""));
  }
  return array;
}

cJSON* entryToJson(const LogicalIORecord& record, const TableKind& kind, std::size_t levelCount) {
  cJSON* const entry = newObject();
  addMember(entry, kNameKey, newStringReference(record.name));
  addMember(entry, kIdKey, newNumberText(record.id));
  addMember(entry, kKeyKey, newNumberText(0));
  addMember(entry, kind.portsKey, portsToJson(record, levelCount));
  addMember(entry, kDescriptionKey, newStringReference(record.description));
  addMember(entry, kCategoryKey, categoriesToJson(record));
  addMember(entry, kTallyKey, newStringReference(record.tally));
  addMember(entry, kRedirectKey, newNumberText(record.redirect));
  return entry;
}

/// Every level key of a file stands for one port of every record.
void requirePortCount(const std::vector<LogicalIORecord>& records, std::size_t levelCount) {
  Budget ports("too many ports", kMaxPorts);
  for (const LogicalIORecord& record : records) {
    ports.take(std::max(record.ports.size(), levelCount));
  }
}

}  // namespace

cJSON* entriesToJson(const std::vector<LogicalIORecord>& records, const TableKind& kind,
                     std::size_t levelCount) {
  requirePortCount(records, levelCount);
  cJSON* const entries = newArray();
  for (const LogicalIORecord& record : records) {
    addElement(entries, entryToJson(record, kind, levelCount));
  }
  return entries;
}

cJSON* legacyFileToJson(const TableKind& kind, cJSON* entries) {
  cJSON* const table = newObject();
  addMember(table, kVersionKey, newNumber(kTableVersion));
  addMember(table, kind.entriesKey, entries);
  return newObject(kind.topLevelKey, table);
}

}  // namespace quenfold
