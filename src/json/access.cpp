#include "json/access.h"

#include <algorithm>
#include <limits>

#include "app/error.h"

namespace quenfold {
namespace {

void requireObject(const JsonValue& value, std::string_view caller) {
  if (!value.IsObject()) {
    throw runtimeError("{} passed non-object", caller);
  }
}

const JsonValue& found(const JsonValue* member, const char* name) {
  if (member == nullptr) {
    throw runtimeError("{} not found", name);
  }
  return *member;
}

}  // namespace

const JsonValue* findMember(const JsonValue& value, const char* name) {
  if (!value.IsObject()) {
    return nullptr;
  }
  const auto member = value.FindMember(name);
  return member == value.MemberEnd() ? nullptr : &member->value;
}

void throwNoString(const JsonValue* member, const char* name) {
  found(member, name);
  throw runtimeError("{} is not string", name);
}

std::int32_t jsonMemberInt(const JsonValue* member, const char* name) {
  if (!found(member, name).IsInt()) {
    throw runtimeError("{} is not number", name);
  }
  return member->GetInt();
}

std::string jsonGetString(const JsonValue& value, const char* name) {
  requireObject(value, "jsonGetString");
  return std::string(jsonMemberText(findMember(value, name), name));
}

std::int32_t jsonGetInt(const JsonValue& value, const char* name) {
  requireObject(value, "jsonGetInt");
  return jsonMemberInt(findMember(value, name), name);
}

std::int32_t jsonToInt32(const JsonValue& number) {
  using Limits = std::numeric_limits<std::int32_t>;
  const double value = number.GetDouble();
  return static_cast<std::int32_t>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

}  // namespace quenfold
