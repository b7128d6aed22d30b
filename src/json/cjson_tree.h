#pragma once

#include <cjson/cJSON.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <memory_resource>
#include <string>

namespace quenfold {

struct CJsonMemoryDeleter {
  std::unique_ptr<std::pmr::monotonic_buffer_resource> memory;
  void operator()(const cJSON* /*root*/) { memory.reset(); }
};

/// Owns a whole cJSON tree with the memory that it lies in, all freed at once. Not to be changed,
/// and no part of it can be handed over to another tree. Any number of them live side by side.
using CJsonDocument = std::unique_ptr<const cJSON, CJsonMemoryDeleter>;

/// Parses as cJSON_Parse does: up to the end of the first value, at most 1000 levels deep. Empty
/// when the text is not JSON; cJSON_GetErrorPtr() then points into `text`. Throws std::bad_alloc
/// when memory ran out, which cJSON itself does not tell apart. The document does not need the
/// text.
CJsonDocument parseCJson(const std::string& text);

/// The document whose root `build` gives, made by the functions below. They work in here only, and
/// give parts of this document, which owns them from the start; inside another `build` this one
/// counts. Throws what `build` throws, and nothing is left of the document then.
CJsonDocument buildCJson(const std::function<cJSON*()>& build);

/// Values that belong to no object or array yet, never null. Every one throws std::bad_alloc
/// instead of leaving something out, and a logic error outside of `buildCJson`.
cJSON* newObject();
cJSON* newObject(const char* name, cJSON* onlyMember);
cJSON* newArray();
cJSON* newNumber(std::int32_t number);
cJSON* newNumber(std::uint32_t number);
cJSON* newString(const char* text);

/// The same numbers as ready text, for those of every record and port.
cJSON* newNumberText(std::int32_t number);
cJSON* newNumberText(std::uint32_t number);

/// The same without a copy: the text must outlive the document and stay as it is.
cJSON* newStringReference(const std::string& text);
cJSON* newStringReference(std::string&& text) = delete;

/// Put the value at the end of the object or array and give it back. The name is copied; one that
/// is there already is not replaced. Throw std::bad_alloc.
cJSON* addMember(cJSON* object, const char* name, cJSON* value);
cJSON* addElement(cJSON* array, cJSON* value);

/// The document as cJSON formats it: an object's members on lines of their own, indented by
/// one tab a level, with a tab between name and value; an array's elements on one line. Takes the
/// document, so that not both are held longer than need be. Throws std::bad_alloc, also for a text
/// of 2 GiB, beyond which cJSON does not go.
std::string printed(CJsonDocument document);

}  // namespace quenfold
