#include "logicalio/legacy_writer.h"

#include <algorithm>
#include <utility>

#include "app/limits.h"

namespace quenfold {
namespace {

constexpr const char* kKeyKey = "key";  // always 0
constexpr std::size_t kLegacyCategoryCount = 6;

CJsonHandle portsOf(const LogicalIORecord& record, std::size_t levelCount) {
  CJsonHandle ports = cjsonArray();
  for (const std::string& port : record.ports) {
    addElement(*ports, cjsonString(port));
  }
  for (std::size_t i = record.ports.size(); i < levelCount; ++i) {
    addElement(*ports, cjsonString(""));
  }
  return ports;
}

CJsonHandle categoriesOf(const LogicalIORecord& record) {
  CJsonHandle categories = cjsonArray();
  for (std::size_t i = 0; i < kLegacyCategoryCount; ++i) {
    const bool given = i < record.categories.size();
    addElement(*categories, cjsonString(given ? catEntryText(record.categories[i]) : ""));
  }
  return categories;
}

CJsonHandle legacyEntry(const LogicalIORecord& record, const TableKind& kind,
                        std::size_t levelCount) {
  CJsonHandle entry = cjsonObject();
  addMember(*entry, kNameKey, cjsonString(record.name));
  addMember(*entry, kIdKey, cjsonNumber(record.id));
  addMember(*entry, kKeyKey, cjsonNumber(0));
  addMember(*entry, kind.portsKey, portsOf(record, levelCount));
  addMember(*entry, kDescriptionKey, cjsonString(record.description));
  addMember(*entry, kCategoryKey, categoriesOf(record));
  addMember(*entry, kTallyKey, cjsonString(record.tally));
  addMember(*entry, kRedirectKey, cjsonNumber(record.redirect));
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

CJsonHandle legacyEntries(std::vector<LogicalIORecord> records, const TableKind& kind,
                          std::size_t levelCount) {
  requirePortCount(records, levelCount);
  CJsonHandle entries = cjsonArray();
  for (LogicalIORecord& record : records) {
    addElement(*entries, legacyEntry(record, kind, levelCount));
    // The tree grows into the memory of the records that it has taken over.
    record = {};
  }
  return entries;
}

CJsonHandle legacyDocument(const TableKind& kind, CJsonHandle entries) {
  CJsonHandle table = cjsonObject();
  addMember(*table, kVersionKey, cjsonNumber(kTableVersion));
  addMember(*table, kind.entriesKey, std::move(entries));
  CJsonHandle document = cjsonObject();
  addMember(*document, kind.topLevelKey, std::move(table));
  return document;
}

}  // namespace quenfold
