#pragma once

#include <algorithm>
#include <cstddef>

namespace quenfold {

/// Memory for many small things that are given back together: cut one after the other from large
/// blocks, which the allocator owns.
class BlockAllocator {
 public:
  /// The size is a multiple of 16. A request of more than an eighth of a block gets memory of its
  /// own; with a block size of 0 every request does.
  explicit BlockAllocator(std::size_t blockSize) : blockSize_(blockSize) {}
  ~BlockAllocator();
  BlockAllocator(const BlockAllocator&) = delete;
  BlockAllocator& operator=(const BlockAllocator&) = delete;

  /// Memory for one thing of that many bytes, at least one; null when there is none. It is aligned
  /// as a thing of that size needs it, whose size is a multiple of its alignment: texts of an odd
  /// length lie side by side. Lives as long as the allocator.
  void* allocate(std::size_t size) {
    const std::size_t alignment = std::min(size & (0 - size), kMostAligned);
    const std::size_t aligned = left_ & (0 - alignment);
    if (size > aligned) {
      return allocateAnew(size);
    }
    left_ = aligned - size;
    return blockEnd_ - aligned;
  }

 private:
  static constexpr std::size_t kMostAligned = alignof(std::max_align_t);

  struct alignas(std::max_align_t) Block {
    Block* previous;
  };

  void* allocateAnew(std::size_t size);
  char* addBlock(std::size_t size);

  std::size_t blockSize_;
  Block* blocks_ = nullptr;
  char* blockEnd_ = nullptr;
  std::size_t left_ = 0;  // bytes before `blockEnd_`, which is aligned for everything
};

}  // namespace quenfold
