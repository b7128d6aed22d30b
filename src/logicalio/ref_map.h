#pragma once

#include <cjson/cJSON.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace VelDB {

/// A two-way dictionary between names and numbers. Both directions hold the same pairs, except that
/// a map loaded from a file keeps the file's gaps and duplicates as they come. Changing operations
/// with a status give 0 when done and 1 when refused, the map then being as before.
class RefMap {
 public:
  RefMap() = default;
  virtual ~RefMap() = default;

  /// The name's id; a new name gets the number of ids so far. In a loaded map with gaps that
  /// number may belong to another name, which then loses it.
  std::uint32_t add(std::string_view name);

  [[nodiscard]] bool contains(std::string_view name) const;
  [[nodiscard]] bool containsId(std::uint32_t id) const;

  /// Null for an unknown id; valid until the entry changes.
  [[nodiscard]] const std::string* nameOf(std::uint32_t id) const;

  /// The number of ids.
  [[nodiscard]] std::size_t size() const { return idToName_.size(); }

  /// Refused when the names are equal, `from` is unknown or `to` is taken.
  int rename(std::string_view from, std::string_view to);

  void clear();

  /// For `buildCJson`: [[id, name], ...] in ascending order of the ids. Throws std::bad_alloc.
  [[nodiscard]] cJSON* toJson() const;

  /// Replaces everything. Children that are no [id, name] are skipped; ids are cut toward zero and
  /// limited to 32 bits, negative ones become 0; a later entry replaces an earlier one.
  void fromJson(const cJSON& array);

  // Defined for other programs: no conversion calls these.

  /// The name's id, and 1 for an unknown name.
  [[nodiscard]] std::uint32_t idOf(std::string_view name) const;

  int removeByName(std::string_view name);
  int removeById(std::uint32_t id);

  /// Refused when the ids are equal, `from` is unknown or `to` is taken.
  int changeId(std::uint32_t from, std::uint32_t to);

  /// Gives the ids 0, 1, 2, ... in ascending order of the names.
  void renumber();

  /// Prints "<id in hexadecimal>=<name><separator>" for each id, then a line end, to standard
  /// output.
  void dump(std::string_view separator = " ") const;

 private:
  std::map<std::string, std::uint32_t, std::less<>> nameToId_;
  std::map<std::uint32_t, std::string> idToName_;
};

}  // namespace VelDB
