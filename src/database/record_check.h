#pragma once

#include <cjson/cJSON.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "database/findings.h"
#include "database/port_names.h"
#include "logicalio/format.h"
#include "logicalio/record.h"

namespace quenfold::database {

/// The ids that more than one record of a table has.
using RepeatedIds = std::unordered_set<std::int32_t>;

/// The table whose records are checked.
struct RecordTable {
  std::string_view file;
  const TableKind& kind;
  std::size_t levelCount;  // ports that unpacking fills a record up to
};

/// Compares the entries of a legacy table with the records that come back, whose ports are keys.
class RecordCheck {
 public:
  RecordCheck(const RecordTable& table, const PortNames& names, const RepeatedIds& repeated,
              Findings& findings)
      : table_(table), names_(names), repeated_(repeated), findings_(findings) {}

  void check(const cJSON& entry, const LogicalIORecord& returned);

 private:
  /// The record that is being checked.
  struct Current {
    const LogicalIORecord& returned;
    std::string place;  // "<file> <id> "<name>""
    std::vector<const cJSON*> ports;
    std::vector<std::string_view> lost;  // members that were told
  };

  void add(Kind kind, const Current& record, std::string_view what);
  void addLost(Current& record, std::string_view member);
  void checkMember(const cJSON& member, bool repeated, Current& record);
  void checkValue(const cJSON& member, Current& record);
  void checkCategories(const cJSON& list, const Current& record);
  void checkPorts(const Current& record);
  void checkPort(const cJSON& port, std::size_t position, const Current& record);
  void checkPortText(std::string_view text, std::size_t position, const Current& record);
  [[nodiscard]] std::string returnedKey(std::string_view shown) const;

  const RecordTable table_;
  const PortNames& names_;
  const RepeatedIds& repeated_;
  Findings& findings_;
};

}  // namespace quenfold::database
