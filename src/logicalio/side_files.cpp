#include "logicalio/side_files.h"

#include <fmt/core.h>

#include <iostream>
#include <stdexcept>
#include <string_view>

#include "app/error.h"
#include "app/files.h"
#include "json/cjson_access.h"
#include "json/cjson_tree.h"
#include "logicalio/format.h"

namespace quenfold {
namespace {

/// The list under that key in the document's first member, whatever its name.
const cJSON& sideListOf(const cJSON* document, const char* key) {
  if (document == nullptr) {
    throw runtimeError("JSON parse error");
  }
  if (document->child == nullptr) {
    throw runtimeError("JSON container not found error");
  }
  const cJSON* const list = findMember(document->child, key);
  if (list == nullptr) {
    throw runtimeError("JSON {} array not found error", key);
  }
  return *list;
}

/// Checks an [id, value] pair and gives the value. `what` names the pair in messages.
const cJSON& valueOfPair(const cJSON& pair, std::string_view what) {
  if (cJSON_IsArray(&pair) == 0) {
    throw runtimeError("{} is not array", what);
  }
  if (cJSON_GetArraySize(&pair) != 2) {
    throw runtimeError("{} size must be 2", what);
  }
  if (cJSON_IsNumber(pair.child) == 0) {
    throw runtimeError("id is not number");
  }
  return *pair.child->next;
}

std::uint32_t idOfPair(const cJSON& pair) {
  return static_cast<std::uint32_t>(pair.child->valueint);
}

std::vector<CatEntry> readCatEntries(const cJSON& list) {
  if (cJSON_IsArray(&list) == 0) {
    throw runtimeError("category is not array");
  }
  std::vector<CatEntry> entries;
  entries.reserve(static_cast<std::size_t>(cJSON_GetArraySize(&list)));
  for (const cJSON* item = list.child; item != nullptr; item = item->next) {
    entries.push_back(readCatEntry(item));
  }
  return entries;
}

/// Running out of memory is no fault of the file and passes through.
template <typename Map>
Map mapOrNotice(Map (*read)(const cJSON*), const std::string& path, std::string_view what) {
  try {
    return read(parseCJson(readFile(path)).get());
  } catch (const std::runtime_error& failure) {
    std::cerr << fmt::format("Error parsing {} map: {} - Assuming monolithic file.\n", what,
                             failure.what());
    return {};
  }
}

}  // namespace

LabelMap labelMapOf(const cJSON* document) {
  LabelMap labels;
  const cJSON& list = sideListOf(document, kLabelsKey);
  for (const cJSON* pair = list.child; pair != nullptr; pair = pair->next) {
    const char* const label = stringValue(&valueOfPair(*pair, "Label entry"));
    if (label == nullptr) {
      throw runtimeError("label is not string");
    }
    labels[idOfPair(*pair)] = label;
  }
  return labels;
}

LegacyCategoryMap legacyCategoryMapOf(const cJSON* document) {
  LegacyCategoryMap categories;
  const cJSON& list = sideListOf(document, kLegacyCategoriesKey);
  for (const cJSON* pair = list.child; pair != nullptr; pair = pair->next) {
    const cJSON& entries = valueOfPair(*pair, "catEntry");
    categories[idOfPair(*pair)] = readCatEntries(entries);
  }
  return categories;
}

LabelMap parseLabelMap(const std::string& path) { return mapOrNotice(labelMapOf, path, "Label"); }

LegacyCategoryMap parseLegacyCategoryMap(const std::string& path) {
  return mapOrNotice(legacyCategoryMapOf, path, "Legacy Category");
}

}  // namespace quenfold
