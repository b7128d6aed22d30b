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
inline const JsonValue* findMember(const JsonValue& value, std::string_view name) {
  if (!value.IsObject()) {
    return nullptr;
  }
  const auto member = value.FindMember(JsonValue(rapidjson::StringRef(name.data(), name.size())));
  return member == value.MemberEnd() ? nullptr : &member->value;
}

/// The string member `name` (the first of that name) of an object. Throws
/// "jsonGetString passed non-object", "<name> not found" or "<name> is not string".
std::string jsonGetString(const JsonValue& value, std::string_view name);

/// The same as a view, which lives as long as the document's text.
std::string_view jsonGetText(const JsonValue& value, std::string_view name);

/// The member `name` of an object as a number that is an integer of 32 bits. Throws
/// "jsonGetInt passed non-object", "<name> not found" or "<name> is not number".
std::int32_t jsonGetInt(const JsonValue& value, std::string_view name);

/// Any JSON number as an integer of 32 bits: cut toward zero, then limited to the type's range.
std::int32_t jsonToInt32(const JsonValue& number);

}  // namespace quenfold
