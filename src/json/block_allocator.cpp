#include "json/block_allocator.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace quenfold {

BlockAllocator::~BlockAllocator() {
  while (blocks_ != nullptr) {
    Block* const block = blocks_;
    blocks_ = block->previous;
    std::free(block);  // NOLINT(*-no-malloc,*-owning-memory)
  }
}

void* BlockAllocator::allocateAnew(std::size_t size) {
  if (size > blockSize_ / 8) {
    return addBlock(size);
  }
  char* const block = addBlock(blockSize_);
  if (block == nullptr) {
    return nullptr;
  }
  blockEnd_ = block + blockSize_;
  left_ = blockSize_ - size;
  return block;
}

// Not from operator new: memory is asked for by C code, through which nothing may be thrown.
char* BlockAllocator::addBlock(std::size_t size) {
  if (size > std::numeric_limits<std::size_t>::max() - sizeof(Block)) {
    return nullptr;
  }
  void* const memory = std::malloc(sizeof(Block) + size);  // NOLINT(*-no-malloc,*-owning-memory)
  if (memory == nullptr) {
    return nullptr;
  }
  blocks_ = new (memory) Block{blocks_};  // NOLINT(*-owning-memory): freed by the destructor
  return static_cast<char*>(memory) + sizeof(Block);
}

}  // namespace quenfold
