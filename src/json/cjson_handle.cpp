#include "json/cjson_handle.h"

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
constexpr std::size_t kBlockSize = 65536;
static_assert(kBlockSize % 16 == 0, "so that the end of a block is aligned for everything");
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
/// allocator.
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

}  // namespace quenfold
