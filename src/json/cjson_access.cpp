#include "json/cjson_access.h"

#include <limits>

#include "json/cjson_tree.h"

namespace quenfold {
namespace {

template <typename Unsigned>
Unsigned saturated(double number) {
  // The limit itself may round up to a power of two that the type does not hold.
  constexpr auto kMax = std::numeric_limits<Unsigned>::max();
  if (number >= static_cast<double>(kMax)) {
    return kMax;
  }
  return number > 0 ? static_cast<Unsigned>(number) : 0;
}

}  // namespace

const cJSON* findMember(const cJSON* object, const char* name) {
  return cJSON_GetObjectItem(object, name);
}

const cJSON* firstChild(const cJSON* list) { return list == nullptr ? nullptr : list->child; }

std::string_view memberName(const cJSON& item) {
  return item.string == nullptr ? std::string_view() : item.string;
}

const char* stringValue(const cJSON* item) {
  return cJSON_IsString(item) != 0 ? item->valuestring : nullptr;
}

std::vector<std::int32_t> intValues(const cJSON* list) {
  std::vector<std::int32_t> values;
  for (const cJSON* item = firstChild(list); item != nullptr; item = item->next) {
    values.push_back(item->valueint);
  }
  return values;
}

std::uint32_t toUint32(double number) { return saturated<std::uint32_t>(number); }

std::uint64_t toUint64(double number) { return saturated<std::uint64_t>(number); }

cJSON* labelMapToJson(const std::map<std::string, std::uint32_t>& map) {
  cJSON* const object = newObject();
  for (const auto& [name, number] : map) {
    addMember(object, name.c_str(), newNumber(number));
  }
  return object;
}

}  // namespace quenfold
