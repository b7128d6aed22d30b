#include "logicalio/legacy_reader.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "app/error.h"
#include "json/cjson_access.h"

namespace quenfold {
namespace {

const char* nonEmptyText(const cJSON& item) {
  const char* const text = stringValue(&item);
  return text == nullptr || *text == '\0' ? nullptr : text;
}

/// An entry on its way to a record.
struct Entry {
  PackRecord record;
  bool hasName = false;
  bool hasId = false;
  bool hasPorts = false;
};

/// Reads one entry of the table after the other, member by member in document order.
class TableReader {
 public:
  TableReader(const TableKind& kind, const PortLabelMap& portKeys, PackedModel& model)
      : kind_(kind), portKeys_(portKeys), model_(model) {}

  PackRecord read(const cJSON& object) {
    Entry entry;
    for (const cJSON* member = object.child; member != nullptr; member = member->next) {
      readMember(*member, memberName(*member), entry);
    }
    requireMembers(entry);
    return std::move(entry.record);
  }

 private:
  void readMember(const cJSON& member, std::string_view name, Entry& entry) {
    if (name == kCategoryKey) {
      readCategories(member, entry.record.fields);
    } else if (name == kind_.portsKey) {
      readPorts(member, entry.record.ports);
      entry.hasPorts = true;
    } else {
      readField(member, name, entry);
      addFingerprint(member, name);
    }
  }

  void readCategories(const cJSON& list, LogicalIORecord& record) {
    record.categories = parseCategoryList(list);
    if (!record.categories.empty()) {
      addCategories(fingerprintOf(model_.fingerprints, kCategoryKey), record.categories);
    }
  }

  /// Gaps before and between ports become empty ports, and so does what is no port key. Kept on
  /// purpose: gaps after the last port are dropped, as unpacking pads the list again.
  void readPorts(const cJSON& list, std::vector<std::optional<PortKeyIds>>& ports) {
    std::size_t gaps = 0;
    for (const cJSON* item = list.child; item != nullptr; item = item->next) {
      const char* const text = nonEmptyText(*item);
      if (text == nullptr) {
        ++gaps;
        continue;
      }
      ports.resize(ports.size() + gaps);
      ports.push_back(model_.portDict.registerPort(portKeyOf(text)));
      gaps = 0;
    }
  }

  [[nodiscard]] std::string_view portKeyOf(std::string_view text) const {
    const std::string_view* const labelled = portKeys_.find(text);
    return labelled == nullptr ? text : *labelled;
  }

  static void readField(const cJSON& member, std::string_view name, Entry& entry) {
    LogicalIORecord& record = entry.record.fields;
    const char* const text = stringValue(&member);
    if (name == kNameKey) {
      if (text == nullptr) {
        throw runtimeError("name is not a string");
      }
      record.name = text;
      entry.hasName = true;
    } else if (name == kIdKey) {
      record.id = member.valueint;
      entry.hasId = true;
    } else if (name == kRedirectKey) {
      record.redirect = member.valueint;
    } else if (name == kTallyKey && text != nullptr) {
      record.tally = text;
    } else if (name == kDescriptionKey && text != nullptr) {
      record.description = text;
    }
  }

  /// Of any member, known or not.
  void addFingerprint(const cJSON& member, std::string_view name) {
    if (const char* const text = nonEmptyText(member)) {
      fingerprintOf(model_.fingerprints, name).hashAdd(std::string_view(text));
    } else if (cJSON_IsNumber(&member) != 0 || cJSON_IsBool(&member) != 0) {
      fingerprintOf(model_.fingerprints, name).hashAdd(static_cast<std::uint32_t>(member.valueint));
    }
  }

  void requireMembers(const Entry& entry) const {
    if (!entry.hasName) {
      throw runtimeError("name not found");
    }
    if (!entry.hasId) {
      throw runtimeError("id not found");
    }
    if (!entry.hasPorts) {
      throw runtimeError("ports entry not found: {}", kind_.portsKey);
    }
  }

  const TableKind& kind_;
  const PortLabelMap& portKeys_;
  PackedModel& model_;
};

}  // namespace

const TableKind& legacyKindOf(const cJSON& document) {
  for (const TableKind& kind : kLegacyTables) {
    if (findMember(&document, kind.topLevelKey) != nullptr) {
      return kind;
    }
  }
  const char* const hint = stringValue(document.child);
  throw runtimeError("Unknown logical IO Type: {}", hint == nullptr ? "" : hint);
}

void parseLegacyTable(const cJSON& table, const TableKind& kind, const PortLabelMap& portKeys,
                      PackedModel& model) {
  model.topLevelKey = kind.topLevelKey;
  model.outputKey = kind.outputKey;
  model.levelKeys = intValues(findMember(&table, kLevelKeysKey));
  const cJSON* const entries = findMember(&table, kind.entriesKey);
  if (entries == nullptr) {
    model.notices
        << "createLogicalDestsDict: logical IO table not found. Creating empty I/O rows\n";
  }
  model.records.reserve(static_cast<std::size_t>(cJSON_GetArraySize(entries)));
  TableReader reader(kind, portKeys, model);
  for (const cJSON* entry = firstChild(entries); entry != nullptr; entry = entry->next) {
    model.records.push_back(reader.read(*entry));
  }
  model.portDict.computeWidths();
}

}  // namespace quenfold
