#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "json/block_allocator.h"
#include "support/failing_malloc.h"
#include "support/heap.h"

namespace quenfold {
namespace {

constexpr std::size_t kBlockSize = 1024;

std::uintptr_t addressOf(const void* memory) { return reinterpret_cast<std::uintptr_t>(memory); }

/// Sizes of texts, of nodes and of what needs memory of its own.
constexpr std::array<std::size_t, 12> kSizes = {1, 64, 2, 3, 129, 40, 7, 8, 128, 2000, 16, 5};

TEST(BlockAllocator, NothingOverlaps) {
  for (const std::size_t blockSize : {std::size_t{0}, kBlockSize}) {
    BlockAllocator blocks(blockSize);
    std::vector<std::vector<unsigned char>> expected;
    std::vector<void*> given;
    for (int round = 0; round < 100; ++round) {
      for (const std::size_t size : kSizes) {
        expected.emplace_back(size, static_cast<unsigned char>(expected.size()));
        given.push_back(blocks.allocate(size));
        ASSERT_NE(given.back(), nullptr);
        std::memset(given.back(), expected.back().front(), size);
      }
    }
    for (std::size_t item = 0; item < given.size(); ++item) {
      EXPECT_EQ(std::memcmp(given[item], expected[item].data(), expected[item].size()), 0) << item;
    }
  }
}

TEST(BlockAllocator, AlignsAsTheSizeAsksFor) {
  constexpr std::size_t kMost = alignof(std::max_align_t);
  for (const std::size_t blockSize : {std::size_t{0}, kBlockSize}) {
    BlockAllocator blocks(blockSize);
    for (const std::size_t size : kSizes) {
      for (std::size_t alignment = 1; alignment <= kMost && size % alignment == 0; alignment *= 2) {
        EXPECT_EQ(addressOf(blocks.allocate(size)) % alignment, 0U) << size;
      }
    }
  }
}

TEST(BlockAllocator, TextsOfAnOddLengthLieSideBySide) {
  BlockAllocator blocks(kBlockSize);
  const std::uintptr_t first = addressOf(blocks.allocate(1));
  EXPECT_EQ(addressOf(blocks.allocate(7)), first + 1);
  EXPECT_EQ(addressOf(blocks.allocate(1)), first + 8);
}

TEST(BlockAllocator, ALargeRequestLeavesTheBlockInUse) {
  BlockAllocator blocks(kBlockSize);
  const std::uintptr_t first = addressOf(blocks.allocate(1));
  EXPECT_NE(blocks.allocate(kBlockSize), nullptr);
  EXPECT_EQ(addressOf(blocks.allocate(1)), first + 1);
}

TEST(BlockAllocator, MoreThanAnEighthOfABlockGetsMemoryOfItsOwn) {
  constexpr std::size_t kEighth = kBlockSize / 8;
  BlockAllocator blocks(kBlockSize);
  std::uintptr_t last = 0;
  for (std::size_t used = 0; used < kBlockSize - 64; used += 64) {
    last = addressOf(blocks.allocate(64));
  }
  EXPECT_NE(addressOf(blocks.allocate(kEighth + 1)), last + 64) << "it does not fit";
  EXPECT_EQ(addressOf(blocks.allocate(32)), last + 64) << "the block is still in use";
  const std::uintptr_t eighth = addressOf(blocks.allocate(kEighth));
  EXPECT_EQ(addressOf(blocks.allocate(32)), eighth + kEighth) << "a new block is in use";
}

TEST(BlockAllocator, GivesEveryBlockBack) {
  const std::size_t before = test::heapInUse();
  {
    BlockAllocator blocks(test::kLarge);
    for (const std::size_t part : {16U, 9U, 8U, 1U}) {
      EXPECT_NE(blocks.allocate(test::kLarge / part), nullptr);
      EXPECT_NE(blocks.allocate(1), nullptr);
    }
  }
  EXPECT_EQ(test::heapInUse(), before);
}

TEST(BlockAllocator, FillsABlockToItsEnd) {
  BlockAllocator blocks(kBlockSize);
  const std::uintptr_t first = addressOf(blocks.allocate(64));
  for (std::size_t used = 64; used < kBlockSize; used += 64) {
    EXPECT_EQ(addressOf(blocks.allocate(64)), first + used);
  }
  const test::FailingMalloc exhausted(0);
  EXPECT_EQ(blocks.allocate(64), nullptr);
}

TEST(BlockAllocator, GivesNothingWithoutMemoryAndGoesOnAfterwards) {
  BlockAllocator blocks(kBlockSize);
  {
    const test::FailingMalloc exhausted(0);
    EXPECT_EQ(blocks.allocate(1), nullptr);
    EXPECT_EQ(blocks.allocate(kBlockSize), nullptr);
    EXPECT_EQ(blocks.allocate(1), nullptr);
  }
  for (std::size_t less = 0; less < alignof(std::max_align_t); ++less) {
    EXPECT_EQ(blocks.allocate(std::numeric_limits<std::size_t>::max() - less), nullptr) << less;
  }
  EXPECT_NE(blocks.allocate(1), nullptr);
}

}  // namespace
}  // namespace quenfold
