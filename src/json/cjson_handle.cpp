#include "json/cjson_handle.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace quenfold {
namespace {

#if defined(__has_feature)
#define QUENFOLD_HAS_FEATURE(feature) __has_feature(feature)
#else
#define QUENFOLD_HAS_FEATURE(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || QUENFOLD_HAS_FEATURE(address_sanitizer)
/// Each node and each text on its own: the sanitizer sees where one ends.
constexpr std::size_t kBlockSize = 0;
#else
constexpr std::size_t kBlockSize = std::size_t{64} * 1024;
#endif

/// Where the tree that is being parsed goes. Process-wide because cJSON's hooks are, and hooks take
/// no argument; set during a parse only.
BlockAllocator* parserBlocks = nullptr;
bool parserRanOutOfMemory = false;

void* blockMalloc(std::size_t size) {
  void* const memory = parserBlocks->allocate(size);
  parserRanOutOfMemory = parserRanOutOfMemory || memory == nullptr;
  return memory;
}

/// The blocks go as a whole, also when a parse fails.
void keepUntilBlocksGo(void* /*memory*/) {}

/// While it lives, cJSON takes memory from the blocks, and failed requests are noted. They are not
/// thrown from the hook: the frames in between are C. Outside a parse cJSON keeps its own
/// allocator, which can also resize the text that it prints.
class ParsingIntoBlocks {
 public:
  explicit ParsingIntoBlocks(BlockAllocator& blocks) {
    parserBlocks = &blocks;
    parserRanOutOfMemory = false;
    cJSON_Hooks hooks = {blockMalloc, keepUntilBlocksGo};
    cJSON_InitHooks(&hooks);
  }
  ~ParsingIntoBlocks() {
    cJSON_InitHooks(nullptr);
    parserBlocks = nullptr;
  }
  ParsingIntoBlocks(const ParsingIntoBlocks&) = delete;
  ParsingIntoBlocks& operator=(const ParsingIntoBlocks&) = delete;
};

CJsonHandle owned(cJSON* created) {
  if (created == nullptr) {
    throw std::bad_alloc();
  }
  return CJsonHandle(created);
}

}  // namespace

CJsonDocument parseCJson(const std::string& text) {
  auto blocks = std::make_unique<BlockAllocator>(kBlockSize);
  const ParsingIntoBlocks parsing(*blocks);
  const cJSON* const tree = cJSON_Parse(text.c_str());
  if (tree == nullptr && parserRanOutOfMemory) {
    throw std::bad_alloc();
  }
  return {tree, {std::move(blocks)}};
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
