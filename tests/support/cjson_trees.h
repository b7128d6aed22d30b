#pragma once

#include <cjson/cJSON.h>

#include <memory>
#include <new>
#include <string>

// What the library itself makes of a tree, for comparison.

namespace quenfold::test {

/// Owns a whole tree that was built.
using CJsonHandle = std::unique_ptr<cJSON, decltype(&cJSON_Delete)>;

inline CJsonHandle owned(cJSON* created) {
  if (created == nullptr) {
    throw std::bad_alloc();
  }
  return {created, &cJSON_Delete};
}

inline CJsonHandle cjsonObject() { return owned(cJSON_CreateObject()); }
inline CJsonHandle cjsonArray() { return owned(cJSON_CreateArray()); }
inline CJsonHandle cjsonNumber(double number) { return owned(cJSON_CreateNumber(number)); }
inline CJsonHandle cjsonString(const std::string& text) {
  return owned(cJSON_CreateString(text.c_str()));
}

/// Hands the item over to the object or array, at its end. A name already there is not replaced.
inline void addMember(cJSON& object, const std::string& name, CJsonHandle item) {
  if (cJSON_AddItemToObject(&object, name.c_str(), item.release()) == 0) {
    throw std::bad_alloc();
  }
}
inline void addElement(cJSON& array, CJsonHandle item) {
  if (cJSON_AddItemToArray(&array, item.release()) == 0) {
    throw std::bad_alloc();
  }
}

/// The tree in the library's formatted layout.
inline std::string printCJson(const cJSON& tree) {
  const std::unique_ptr<char, void (*)(void*)> text(cJSON_Print(&tree), cJSON_free);
  if (!text) {
    throw std::bad_alloc();
  }
  return text.get();
}

}  // namespace quenfold::test
