#include "logicalio/record.h"

#include <utility>

#include "app/error.h"
#include "app/text.h"
#include "json/cjson_access.h"

namespace quenfold {
namespace {

CatEntry numberEntry(std::int32_t number) { return {false, number, {}}; }

CatEntry textEntry(std::string text) { return {true, 0, std::move(text)}; }

CatEntry legacyEntry(const char* text) {
  std::uint32_t number = 0;
  return parseWholeUnsigned(text, number) ? numberEntry(static_cast<std::int32_t>(number))
                                          : textEntry(text);
}

}  // namespace

std::vector<CatEntry> parseCategoryList(const cJSON& list) {
  std::vector<CatEntry> entries;
  for (const cJSON* item = list.child; item != nullptr; item = item->next) {
    const char* const text = stringValue(item);
    if (text != nullptr && *text != '\0') {
      entries.push_back(legacyEntry(text));
    } else if (cJSON_IsNumber(item) != 0) {
      entries.push_back(numberEntry(item->valueint));
    } else {
      break;
    }
  }
  return entries;
}

CatEntry readCatEntry(const cJSON* value) {
  if (value == nullptr) {
    throw runtimeError("CatEntry JSON obj is null");
  }
  if (cJSON_IsNumber(value) != 0) {
    return numberEntry(value->valueint);
  }
  if (cJSON_IsString(value) == 0) {
    throw runtimeError("CatEntry JSON invalid object type");
  }
  if (value->valuestring == nullptr) {
    throw runtimeError("CatEntry JSON string value is null");
  }
  return textEntry(value->valuestring);
}

std::string catEntryText(const CatEntry& entry) {
  return entry.isText ? entry.text : std::to_string(entry.number);
}

}  // namespace quenfold
