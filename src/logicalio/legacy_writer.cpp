#include "logicalio/legacy_writer.h"

#include <algorithm>

#include "app/limits.h"
#include "json/formatted_json.h"

namespace quenfold {
namespace {

constexpr const char* kKeyKey = "key";  // always 0
constexpr std::size_t kLegacyCategoryCount = 6;

void writePorts(FormattedJson& json, const LogicalIORecord& record, std::size_t levelCount) {
  json.beginArray();
  for (const std::string& port : record.ports) {
    json.string(port);
  }
  for (std::size_t i = record.ports.size(); i < levelCount; ++i) {
    json.string("");
  }
  json.endArray();
}

void writeCategories(FormattedJson& json, const LogicalIORecord& record) {
  json.beginArray();
  for (std::size_t i = 0; i < kLegacyCategoryCount; ++i) {
    json.string(i < record.categories.size() ? catEntryText(record.categories[i]) : "");
  }
  json.endArray();
}

void writeEntry(FormattedJson& json, const LogicalIORecord& record, const TableKind& kind,
                std::size_t levelCount) {
  json.beginObject();
  json.key(kNameKey);
  json.string(record.name);
  json.key(kIdKey);
  json.number(record.id);
  json.key(kKeyKey);
  json.number(0);
  json.key(kind.portsKey);
  writePorts(json, record, levelCount);
  json.key(kDescriptionKey);
  json.string(record.description);
  json.key(kCategoryKey);
  writeCategories(json, record);
  json.key(kTallyKey);
  json.string(record.tally);
  json.key(kRedirectKey);
  json.number(record.redirect);
  json.endObject();
}

/// Every level key of a file stands for one port of every record.
void requirePortCount(const std::vector<LogicalIORecord>& records, std::size_t levelCount) {
  Budget ports("too many ports", kMaxPorts);
  for (const LogicalIORecord& record : records) {
    ports.take(std::max(record.ports.size(), levelCount));
  }
}

}  // namespace

std::string legacyText(const std::vector<LogicalIORecord>& records, const TableKind& kind,
                       std::size_t levelCount) {
  requirePortCount(records, levelCount);
  FormattedJson json;
  json.beginObject();
  json.key(kind.topLevelKey);
  json.beginObject();
  json.key(kVersionKey);
  json.number(kTableVersion);
  json.key(kind.entriesKey);
  json.beginArray();
  for (const LogicalIORecord& record : records) {
    writeEntry(json, record, kind, levelCount);
  }
  json.endArray();
  json.endObject();
  json.endObject();
  return json.take();
}

}  // namespace quenfold
