#include "json/cjson_handle.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace quenfold {
namespace {

bool parserRanOutOfMemory = false;

// cJSON frees what this gives.
void* notingMalloc(std::size_t size) {
  void* const memory = std::malloc(size);  // NOLINT(*-no-malloc,*-owning-memory)
  parserRanOutOfMemory = parserRanOutOfMemory || memory == nullptr;
  return memory;
}

/// While it lives, cJSON's failed allocations are noted. They are not thrown from here: the
/// frames in between are C. Outside a parse cJSON keeps its own allocator, which can also resize.
class AllocationWatch {
 public:
  AllocationWatch() {
    parserRanOutOfMemory = false;
    cJSON_Hooks hooks = {notingMalloc, std::free};
    cJSON_InitHooks(&hooks);
  }
  ~AllocationWatch() { cJSON_InitHooks(nullptr); }
  AllocationWatch(const AllocationWatch&) = delete;
  AllocationWatch& operator=(const AllocationWatch&) = delete;
};

CJsonHandle owned(cJSON* created) {
  if (created == nullptr) {
    throw std::bad_alloc();
  }
  return CJsonHandle(created);
}

}  // namespace

CJsonHandle parseCJson(const std::string& text) {
  const AllocationWatch watch;
  CJsonHandle tree(cJSON_Parse(text.c_str()));
  if (!tree && parserRanOutOfMemory) {
    throw std::bad_alloc();
  }
  return tree;
}

std::string printCJson(const cJSON& tree) {
  const std::unique_ptr<char, void (*)(void*)> text(cJSON_Print(&tree), cJSON_free);
  if (!text) {
    throw std::bad_alloc();
  }
  return text.get();
}

CJsonHandle cjsonObject() { return owned(cJSON_CreateObject()); }

CJsonHandle cjsonArray() { return owned(cJSON_CreateArray()); }

CJsonHandle cjsonString(const std::string& text) { return owned(cJSON_CreateString(text.c_str())); }

CJsonHandle cjsonNumber(double number) { return owned(cJSON_CreateNumber(number)); }

CJsonHandle cjsonIntArray(const std::vector<std::int32_t>& numbers) {
  static_assert(sizeof(int) == sizeof(std::int32_t));
  // An empty vector may have no data, which cJSON would refuse.
  const int none = 0;
  const int* const first = numbers.empty() ? &none : numbers.data();
  return owned(cJSON_CreateIntArray(first, static_cast<int>(numbers.size())));
}

void addMember(cJSON& object, const std::string& name, CJsonHandle item) {
  if (cJSON_AddItemToObject(&object, name.c_str(), item.get()) == 0) {
    throw std::bad_alloc();
  }
  static_cast<void>(item.release());
}

void addElement(cJSON& array, CJsonHandle item) {
  if (cJSON_AddItemToArray(&array, item.get()) == 0) {
    throw std::bad_alloc();
  }
  static_cast<void>(item.release());
}

}  // namespace quenfold
