#include "json/cjson_tree.h"

#include <fmt/format.h>

#include <new>
#include <stdexcept>
#include <utility>

namespace quenfold {
namespace {

/// The memory of one tree.
struct Arena {
  std::unique_ptr<std::pmr::monotonic_buffer_resource> memory =
      std::make_unique<std::pmr::monotonic_buffer_resource>();
  bool exhausted = false;  // a request has failed
};

/// Where cJSON's memory comes from; null: from the C library. Process-wide because cJSON's hooks
/// are, and hooks take no argument.
Arena* serving = nullptr;

/// A failed request is noted, not thrown: the frames in between are C.
void* allocateFromArena(std::size_t size) {
  try {
    // What lies there is nodes and texts, and a text needs no alignment.
    return serving->memory->allocate(size, alignof(cJSON));
  } catch (const std::bad_alloc&) {
    serving->exhausted = true;
    return nullptr;
  }
}

/// The arena goes as a whole.
void keepUntilArenaGoes(void* /*memory*/) {}

void installHooks() {
  cJSON_Hooks hooks = {allocateFromArena, keepUntilArenaGoes};
  cJSON_InitHooks(serving == nullptr ? nullptr : &hooks);
}

/// While it lives, cJSON's memory comes from there.
class Serving {
 public:
  explicit Serving(Arena* arena) : outer_(std::exchange(serving, arena)) { installHooks(); }
  ~Serving() {
    serving = outer_;
    installHooks();
  }
  Serving(const Serving&) = delete;
  Serving& operator=(const Serving&) = delete;

 private:
  Arena* outer_;
};

/// A value that must have come into being.
template <typename Create, typename... Args>
cJSON* made(Create create, Args... args) {
  if (serving == nullptr) {
    throw std::logic_error("a value of no document");
  }
  cJSON* const value = create(args...);
  if (value == nullptr) {
    throw std::bad_alloc();
  }
  return value;
}

cJSON* requireAdded(cJSON_bool added, cJSON* value) {
  if (added == 0) {
    throw std::bad_alloc();
  }
  return value;
}

}  // namespace

CJsonDocument parseCJson(const std::string& text) {
  Arena arena;
  const Serving scope(&arena);
  const cJSON* const root = cJSON_Parse(text.c_str());
  if (root == nullptr && arena.exhausted) {
    throw std::bad_alloc();
  }
  return {root, {std::move(arena.memory)}};
}

CJsonDocument buildCJson(const std::function<cJSON*()>& build) {
  Arena arena;
  const Serving scope(&arena);
  const cJSON* const root = build();
  return {root, {std::move(arena.memory)}};
}

cJSON* newObject() { return made(cJSON_CreateObject); }

cJSON* newObject(const char* name, cJSON* onlyMember) {
  cJSON* const object = newObject();
  addMember(object, name, onlyMember);
  return object;
}

cJSON* newArray() { return made(cJSON_CreateArray); }

cJSON* newNumber(std::int32_t number) { return made(cJSON_CreateNumber, number); }

cJSON* newNumber(std::uint32_t number) { return made(cJSON_CreateNumber, number); }

// The library prints a number by sprintf and reads it back, which costs packing 26 % of cpu time.
cJSON* newNumberText(std::int32_t number) {
  return made(cJSON_CreateRaw, fmt::format_int(number).c_str());
}

cJSON* newNumberText(std::uint32_t number) {
  return made(cJSON_CreateRaw, fmt::format_int(number).c_str());
}

cJSON* newString(const char* text) { return made(cJSON_CreateString, text); }

cJSON* newStringReference(const std::string& text) {
  return made(cJSON_CreateStringReference, text.c_str());
}

cJSON* addMember(cJSON* object, const char* name, cJSON* value) {
  return requireAdded(cJSON_AddItemToObject(object, name, value), value);
}

cJSON* addElement(cJSON* array, cJSON* value) {
  return requireAdded(cJSON_AddItemToArray(array, value), value);
}

std::string printed(CJsonDocument document) {
  const std::unique_ptr<char, void (*)(void*)> text(cJSON_Print(document.get()), cJSON_free);
  if (!text) {
    throw std::bad_alloc();
  }
  document.reset();  // not both beside the copy
  return text.get();
}

}  // namespace quenfold
