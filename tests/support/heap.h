#pragma once

#include <malloc.h>

#include <cstddef>

namespace quenfold::test {

/// More than the C library ever keeps aside for the next request: once freed it counts no more.
inline constexpr std::size_t kLarge = std::size_t{1} << 20U;

/// The bytes that were allocated and not freed. Always 0 under the address sanitizer, which looks
/// for leaks itself.
inline std::size_t heapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

}  // namespace quenfold::test
