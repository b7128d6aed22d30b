#include "database/check_tables.h"

#include <fmt/format.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "app/key_hash.h"
#include "database/port_names.h"
#include "database/record_check.h"
#include "json/cjson_access.h"
#include "logicalio/format.h"

namespace quenfold::database {
namespace {

/// Whether packing's lookup takes it for that key.
bool isKey(const cJSON& member, std::string_view key) {
  const std::string_view name = memberName(member);
  return name.size() == key.size() && strncasecmp(name.data(), key.data(), key.size()) == 0;
}

bool isTableKey(const cJSON& member) {
  return std::any_of(kLegacyTables.begin(), kLegacyTables.end(),
                     [&](const TableKind& kind) { return isKey(member, kind.topLevelKey); });
}

class TableCheck {
 public:
  TableCheck(Table table, const LegacyTable& legacy, Findings& findings)
      : file_(kTableFiles.at(table)), legacy_(legacy), findings_(findings) {}

  void checkFrame(const PackedTable& packed) {
    for (const cJSON* member = legacy_.document->child; member != nullptr; member = member->next) {
      if (member == legacy_.contents) {
        if (memberName(*member) != packed.kind->topLevelKey) {
          add(Kind::kMemberIgnored,
              fmt::format("{} {} -> {}", file_, memberName(*member), packed.kind->topLevelKey));
        }
      } else {
        add(isTableKey(*member) ? Kind::kFieldLost : Kind::kMemberIgnored,
            fmt::format("{} {}", file_, memberName(*member)));
      }
    }
    if (legacy_.hasZeroBytes) {
      add(Kind::kFieldLost, fmt::format("{} \\u0000", file_));
    }
  }

  void checkContents() {
    const cJSON* const entries = findMember(legacy_.contents, legacy_.kind->entriesKey);
    if (entries == nullptr) {
      add(Kind::kReadingStops,
          fmt::format("{}: {} not found", legacy_.kind->topLevelKey, legacy_.kind->entriesKey));
    }
    for (const cJSON* member = legacy_.contents->child; member != nullptr; member = member->next) {
      checkMember(*member, entries);
    }
  }

  /// The ids that more than one record has, each told once.
  void checkIds(const std::vector<LogicalIORecord>& records, RepeatedIds& repeated) {
    std::unordered_map<std::int32_t, std::size_t> counts;
    for (const LogicalIORecord& record : records) {
      if (++counts[record.id] == 2) {
        repeated.insert(record.id);
        add(Kind::kIdRepeated, fmt::format("{} {}", file_, record.id));
      }
    }
  }

 private:
  void add(Kind kind, const std::string& place) {
    findings_.add(kind, file_, [&] { return place; });
  }

  void checkMember(const cJSON& member, const cJSON* entries) {
    const std::string place =
        fmt::format("{} {}.{}", file_, legacy_.kind->topLevelKey, memberName(member));
    if (&member == entries) {
      return;
    }
    if (isKey(member, kLevelKeysKey) && &member == findMember(legacy_.contents, kLevelKeysKey)) {
      if (member.child != nullptr) {
        add(Kind::kLevelKeysLost, place);
      }
    } else if (isKey(member, legacy_.kind->entriesKey) || isKey(member, kLevelKeysKey)) {
      add(Kind::kFieldLost, place);
    } else if (!isKey(member, kVersionKey) || cJSON_IsNumber(&member) == 0 ||
               member.valuedouble != kTableVersion) {
      add(Kind::kMemberIgnored, place);
    }
  }

  std::string_view file_;
  const LegacyTable& legacy_;
  Findings& findings_;
};

}  // namespace

void checkTable(Table table, const LegacyTable& legacy, const TableContext& context,
                Findings& findings) {
  const PackedTable& packed = *context.packed.tables.at(table);
  TableCheck frame(table, legacy, findings);
  frame.checkFrame(packed);
  frame.checkContents();
  RepeatedIds repeated;
  frame.checkIds(packed.records, repeated);
  const PortNames names(legacy, context);
  const std::size_t levels = intValues(findMember(packed.contents, kLevelKeysKey)).size();
  RecordCheck check({kTableFiles.at(table), *legacy.kind, levels}, names, repeated, findings);
  const cJSON* entry = firstChild(findMember(legacy.contents, legacy.kind->entriesKey));
  for (const LogicalIORecord& record : packed.records) {
    check.check(*entry, record);
    entry = entry->next;
  }
}

}  // namespace quenfold::database
