#include "logicalio/legacy_reader.h"

#include <array>
#include <cstddef>
#include <iostream>
#include <string_view>

#include "app/error.h"
#include "json/cjson_access.h"

namespace quenfold {
namespace {

const char* nonEmptyText(const cJSON& item) {
  const char* const text = stringValue(&item);
  return text == nullptr || *text == '\0' ? nullptr : text;
}

/// The ports of a list and the gaps before them.
std::size_t portCount(const cJSON& list) {
  std::size_t items = 0;
  std::size_t ports = 0;
  for (const cJSON* item = list.child; item != nullptr; item = item->next) {
    ++items;
    ports = nonEmptyText(*item) == nullptr ? ports : items;
  }
  return ports;
}

/// The members that a record keeps besides its ports.
enum Field : std::size_t { kName, kId, kTally, kRedirect, kDescription, kCategory, kFieldCount };

/// By `Field`.
constexpr std::array<std::string_view, kFieldCount> kFieldNames = {
    kNameKey, kIdKey, kTallyKey, kRedirectKey, kDescriptionKey, kCategoryKey};

/// `kFieldCount` for every other member.
Field fieldOf(std::string_view name) {
  std::size_t field = 0;
  while (field < kFieldCount && name != kFieldNames[field]) {
    ++field;
  }
  return static_cast<Field>(field);
}

/// The fingerprints of a table's members; those of fields are looked up once. Each is created when
/// it is asked for the first time.
class MemberFingerprints {
 public:
  explicit MemberFingerprints(Fingerprints& fingerprints) : fingerprints_(fingerprints) {}

  VelDB::Hash& of(Field field, std::string_view name) {
    if (field == kFieldCount) {
      return fingerprintOf(fingerprints_, name);
    }
    VelDB::Hash*& known = known_[field];
    if (known == nullptr) {
      known = &fingerprintOf(fingerprints_, name);
    }
    return *known;
  }

 private:
  Fingerprints& fingerprints_;
  std::array<VelDB::Hash*, kFieldCount> known_{};
};

/// Reads one entry of the table into a new record, member by member in document order.
class EntryReader {
 public:
  EntryReader(const TableKind& kind, const PortLabelMap& portKeys, MemberFingerprints& fingerprints,
              PackedModel& model)
      : kind_(kind), portKeys_(portKeys), fingerprints_(fingerprints), model_(model) {}

  void read(const cJSON& entry) && {
    for (const cJSON* member = entry.child; member != nullptr; member = member->next) {
      readMember(*member, memberName(*member));
    }
    requireMembers();
  }

 private:
  void readMember(const cJSON& member, std::string_view name) {
    const Field field = fieldOf(name);
    if (field == kCategory) {
      readCategories(member);
    } else if (field == kFieldCount && name == kind_.portsKey) {
      readPorts(member);
    } else {
      const char* const text = stringValue(&member);
      readField(member, field, text);
      addFingerprint(member, text, field, name);
    }
  }

  void readCategories(const cJSON& list) {
    record_.categories = parseCategoryList(list);
    if (!record_.categories.empty()) {
      addCategories(fingerprints_.of(kCategory, kCategoryKey), record_.categories);
    }
  }

  /// Gaps before and between ports become empty ports. Kept on purpose: gaps after the last port
  /// are dropped, as unpacking pads the list again.
  void readPorts(const cJSON& list) {
    hasPorts_ = true;
    if (ports_.empty()) {  // else a repeated member grows the list
      ports_.reserve(portCount(list));
    }
    std::size_t gaps = 0;
    for (const cJSON* item = list.child; item != nullptr; item = item->next) {
      const char* const text = nonEmptyText(*item);
      if (text == nullptr) {
        ++gaps;
        continue;
      }
      ports_.resize(ports_.size() + gaps);
      ports_.push_back(model_.portDict.registerPort(portKeyOf(text)));
      gaps = 0;
    }
  }

  [[nodiscard]] std::string_view portKeyOf(std::string_view text) const {
    const std::string_view* const labelled = portKeys_.find(text);
    return labelled == nullptr ? text : *labelled;
  }

  void readField(const cJSON& member, Field field, const char* text) {
    if (field == kName) {
      readName(text);
    } else if (field == kId) {
      record_.id = member.valueint;
      hasId_ = true;
    } else if (field == kRedirect) {
      record_.redirect = member.valueint;
    } else if (field == kTally && text != nullptr) {
      record_.tally = text;
    } else if (field == kDescription && text != nullptr) {
      record_.description = text;
    }
  }

  void readName(const char* text) {
    if (text == nullptr) {
      throw runtimeError("name is not a string");
    }
    record_.name = text;
    hasName_ = true;
  }

  /// Of any member, known or not.
  void addFingerprint(const cJSON& member, const char* text, Field field, std::string_view name) {
    if (text != nullptr) {
      if (*text != '\0') {
        fingerprints_.of(field, name).hashAdd(std::string_view(text));
      }
    } else if (cJSON_IsNumber(&member) != 0 || cJSON_IsBool(&member) != 0) {
      fingerprints_.of(field, name).hashAdd(static_cast<std::uint32_t>(member.valueint));
    }
  }

  void requireMembers() const {
    if (!hasName_) {
      throw runtimeError("name not found");
    }
    if (!hasId_) {
      throw runtimeError("id not found");
    }
    if (!hasPorts_) {
      throw runtimeError("ports entry not found: {}", kind_.portsKey);
    }
  }

  const TableKind& kind_;
  const PortLabelMap& portKeys_;
  MemberFingerprints& fingerprints_;
  PackedModel& model_;
  LogicalIORecord& record_ = model_.records.emplace_back();
  NumberedPorts& ports_ = model_.ports.emplace_back();
  bool hasName_ = false;
  bool hasId_ = false;
  bool hasPorts_ = false;
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
  const cJSON* const entries = findMember(&table, kind.entriesKey);
  if (entries == nullptr) {
    std::cerr << "createLogicalDestsDict: logical IO table not found. Creating empty I/O rows\n";
  }
  const auto count = static_cast<std::size_t>(cJSON_GetArraySize(entries));
  model.records.reserve(count);
  model.ports.reserve(count);
  MemberFingerprints fingerprints(model.fingerprints);
  for (const cJSON* entry = firstChild(entries); entry != nullptr; entry = entry->next) {
    EntryReader(kind, portKeys, fingerprints, model).read(*entry);
  }
  model.portDict.computeWidths();
}

}  // namespace quenfold
