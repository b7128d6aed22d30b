#pragma once

#include <cjson/cJSON.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quenfold {

/// The first member of that name in an object, letter case ignored; null when there is none, when
/// `object` is no object and when it is null.
const cJSON* findMember(const cJSON* object, const char* name);

/// The first element of an array or member of an object, linked to the others by `next`; null when
/// there is none, for a scalar and for null.
const cJSON* firstChild(const cJSON* list);

/// A member's name; empty for an element of an array. Lives as long as the tree.
std::string_view memberName(const cJSON& item);

/// The text of a string; null for everything else and for null. Lives as long as the tree.
const char* stringValue(const cJSON* item);

/// The integers of a list's children: 0 for a child that is no number, 1 for true.
std::vector<std::int32_t> intValues(const cJSON* list);

/// Cut toward zero, then limited to the type's range, as the controller converts. Not a number
/// gives 0.
std::uint32_t toUint32(double number);
std::uint64_t toUint64(double number);

/// For `buildCJson`: an object with a member for each entry, in key order. Throws std::bad_alloc.
cJSON* labelMapToJson(const std::map<std::string, std::uint32_t>& map);

}  // namespace quenfold
