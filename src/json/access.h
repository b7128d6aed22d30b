#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "json/document.h"

namespace quenfold {

/// A JSON string as this program takes it: its bytes up to the first zero byte. The view lives as
/// long as the document's text.
inline std::string_view jsonText(const JsonValue& string) { return string.GetString(); }

/// The first member of that name; null when there is none or the value is no object.
const JsonValue* findMember(const JsonValue& value, const char* name);

/// The string member `name` (the first of that name) of an object. Throws
/// "jsonGetString passed non-object", "<name> not found" or "<name> is not string".
std::string jsonGetString(const JsonValue& value, const char* name);

/// The member `name` of an object as a number that is an integer of 32 bits. Throws
/// "jsonGetInt passed non-object", "<name> not found" or "<name> is not number".
std::int32_t jsonGetInt(const JsonValue& value, const char* name);

/// Why that member, null when there is none, is no string: throws as `jsonGetString`.
[[noreturn]] void throwNoString(const JsonValue* member, const char* name);

/// The same checks of a member at hand, null when there is none.
inline std::string_view jsonMemberText(const JsonValue* member, const char* name) {
  if (member == nullptr || !member->IsString()) {
    throwNoString(member, name);
  }
  return jsonText(*member);
}
std::int32_t jsonMemberInt(const JsonValue* member, const char* name);

/// Any JSON number as an integer of 32 bits: cut toward zero, then limited to the type's range.
std::int32_t jsonToInt32(const JsonValue& number);

}  // namespace quenfold
