#include "json/access.h"

#include <algorithm>
#include <limits>

#include "app/error.h"

namespace quenfold {
namespace {

/// The member, which must be there; `caller` is for the message.
inline const JsonValue& requireMember(const JsonValue& value, std::string_view name,
                                      std::string_view caller) {
  if (!value.IsObject()) {
    throw runtimeError("{} passed non-object", caller);
  }
  const JsonValue* const member = findMember(value, name);
  if (member == nullptr) {
    throw runtimeError("{} not found", name);
  }
  return *member;
}

}  // namespace

std::string_view jsonGetText(const JsonValue& value, std::string_view name) {
  const JsonValue& member = requireMember(value, name, "jsonGetString");
  if (!member.IsString()) {
    throw runtimeError("{} is not string", name);
  }
  return jsonText(member);
}

std::string jsonGetString(const JsonValue& value, std::string_view name) {
  return std::string(jsonGetText(value, name));
}

std::int32_t jsonGetInt(const JsonValue& value, std::string_view name) {
  const JsonValue& member = requireMember(value, name, "jsonGetInt");
  if (!member.IsInt()) {
    throw runtimeError("{} is not number", name);
  }
  return member.GetInt();
}

std::int32_t jsonToInt32(const JsonValue& number) {
  using Limits = std::numeric_limits<std::int32_t>;
  const double value = number.GetDouble();
  return static_cast<std::int32_t>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

}  // namespace quenfold
