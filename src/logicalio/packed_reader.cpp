#include "logicalio/packed_reader.h"

#include <fmt/core.h>

#include <cstddef>
#include <string>
#include <system_error>
#include <utility>

#include "app/error.h"
#include "app/limits.h"
#include "json/cjson_access.h"
#include "logicalio/hash.h"

namespace quenfold {
namespace {

std::uint32_t mapKeyOf(const LogicalIORecord& record) {
  return static_cast<std::uint32_t>(record.id);
}

std::size_t sizeOf(const cJSON* list) { return static_cast<std::size_t>(cJSON_GetArraySize(list)); }

std::string textOrEmpty(const cJSON* item) {
  const char* const text = stringValue(item);
  return text == nullptr ? "" : text;
}

std::int32_t requireId(const cJSON& entry) {
  const cJSON* const id = findMember(&entry, kIdKey);
  if (id == nullptr) {
    throw runtimeError("id not found");
  }
  return id->valueint;
}

std::string defaultName(std::int32_t id, std::ostream& notices) {
  notices << fmt::format("Error loading label for id:{}. Using default.\n", id);
  return fmt::format("{}{}", kDefaultName, id);
}

std::string nameOf(const cJSON& entry, const LogicalIORecord& record,
                   const PackedContext& context) {
  const auto labelled = context.names.find(mapKeyOf(record));
  if (labelled != context.names.end()) {
    return labelled->second;
  }
  const char* const own = stringValue(findMember(&entry, kNameKey));
  return own != nullptr ? own : defaultName(record.id, context.notices);
}

std::int32_t redirectOf(const cJSON& entry) {
  const cJSON* const redirect = findMember(&entry, kRedirectKey);
  return redirect == nullptr ? kNoRedirect : redirect->valueint;
}

std::vector<CatEntry> categoriesOf(const cJSON& entry, const LogicalIORecord& record,
                                   const LegacyCategoryMap& categories) {
  const auto listed = categories.find(mapKeyOf(record));
  if (listed != categories.end()) {
    return listed->second;
  }
  const cJSON* const own = findMember(&entry, kCategoryKey);
  return own == nullptr ? std::vector<CatEntry>() : parseCategoryList(*own);
}

/// Reads one record after the other. Names, labels and categories of the other files are copied
/// into every record that refers to them, so a few long ones could fill any memory.
class RecordReader {
 public:
  explicit RecordReader(const PackedContext& context) : context_(context) {}

  LogicalIORecord read(const cJSON& entry) {
    LogicalIORecord record;
    record.id = requireId(entry);
    record.name = nameOf(entry, record, context_);
    bytes_.take(record.name.size());
    record.tally = textOrEmpty(findMember(&entry, kTallyKey));
    record.redirect = redirectOf(entry);
    record.description = textOrEmpty(findMember(&entry, kDescriptionKey));
    record.categories = categoriesOf(entry, record, context_.categories);
    for (const CatEntry& category : record.categories) {
      bytes_.take(kCategoryBytes + category.text.size());
    }
    record.ports = portsOf(entry);
    return record;
  }

  [[nodiscard]] std::uint32_t portFingerprint() const { return fingerprint_.value(); }

 private:
  /// What is no number is a gap; gaps after the last number are dropped.
  std::vector<std::string> portsOf(const cJSON& entry) {
    const cJSON* const list = findMember(&entry, kPortKey);
    std::vector<std::string> ports;
    ports.reserve(sizeOf(list));
    std::size_t gaps = 0;
    for (const cJSON* item = firstChild(list); item != nullptr; item = item->next) {
      if (cJSON_IsNumber(item) == 0) {
        ++gaps;
        continue;
      }
      const std::uint64_t packed = toUint64(item->valuedouble);
      fingerprint_.hashAdd(packed);
      ports.resize(ports.size() + gaps);
      ports.push_back(portText(packed));
      bytes_.take(ports.back().size());
      gaps = 0;
    }
    return ports;
  }

  [[nodiscard]] std::string portText(std::uint64_t packed) const {
    std::string key = context_.portDict.unpackToPortKey(packed);
    const std::string_view* const labelled =
        context_.portLabels == nullptr ? nullptr : context_.portLabels->find(key);
    return labelled == nullptr ? std::move(key) : std::string(*labelled);
  }

  static constexpr std::uint64_t kCategoryBytes = 64;  // of an entry beside its text

  const PackedContext& context_;
  VelDB::Hash fingerprint_;
  Budget bytes_{"too many bytes of records", kMaxRecordBytes};
};

}  // namespace

const TableKind& packedKindOf(const cJSON& document) {
  for (const TableKind& kind : kPackedTables) {
    if (findMember(&document, kind.topLevelKey) != nullptr) {
      return kind;
    }
  }
  throw runtimeError("Unknown logical IO Type");
}

void requirePackedMembers(const cJSON* table) {
  for (const char* const name : {kVersionKey, kHashKey, kLogicalIOKey, kPortDictKey}) {
    if (findMember(table, name) == nullptr) {
      throw runtimeError("Error \"{}\" not found.", name);
    }
  }
}

void loadPortDict(const cJSON* table, PortDict& dict) {
  const std::error_code failure = dict.fromJson(*findMember(table, kPortDictKey));
  if (failure) {
    throw runtimeError("{}", failure.message());
  }
}

UnpackedRecords parsePackedLogicalIOTable(const cJSON* table, const PackedContext& context) {
  const cJSON* const entries = findMember(table, kLogicalIOKey);
  if (entries == nullptr) {
    throw runtimeError("parsePackedLogicalIOTable: logical IO table not found");
  }
  UnpackedRecords unpacked;
  unpacked.records.reserve(sizeOf(entries));
  RecordReader reader(context);
  for (const cJSON* entry = entries->child; entry != nullptr; entry = entry->next) {
    unpacked.records.push_back(reader.read(*entry));
  }
  unpacked.portFingerprint = reader.portFingerprint();
  return unpacked;
}

}  // namespace quenfold
