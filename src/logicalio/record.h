#pragma once

#include <cjson/cJSON.h>

#include <cstdint>
#include <string>
#include <vector>

namespace quenfold {

/// One category of a record: a number or a text.
struct CatEntry {
  bool isText = false;
  std::int32_t number = 0;
  std::string text;
};

/// The redirect of a record that has none.
inline constexpr std::int32_t kNoRedirect = 1;

/// One logical source or destination.
struct LogicalIORecord {
  std::string name;
  std::int32_t id = 0;
  std::vector<std::string> ports;  // port keys or labels; packing numbers them instead
  std::vector<CatEntry> categories;
  std::string tally;
  std::int32_t redirect = kNoRedirect;
  std::string description;
};

/// The categories of a legacy "category" list. A string that is a decimal number becomes one; an
/// empty string, and what is neither string nor number, ends the list.
std::vector<CatEntry> parseCategoryList(const cJSON& list);

/// One entry of a packed category list, where "5" is a text. Throws "CatEntry JSON obj is null",
/// "CatEntry JSON string value is null" or "CatEntry JSON invalid object type".
CatEntry readCatEntry(const cJSON* value);

/// The text, or the number's decimal digits.
std::string catEntryText(const CatEntry& entry);

}  // namespace quenfold
