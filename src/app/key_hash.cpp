#include "app/key_hash.h"

#include <sys/auxv.h>

#include <cstring>

// Every function of the library is compiled into this file, and it has no other.
#define XXH_INLINE_ALL
#include <xxhash.h>

namespace quenfold {
namespace {

/// The kernel leaves random bytes to every program that it starts.
std::uint64_t secretOfTheRun() {
  std::uint64_t secret = 0;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): an address as a number is what the system gives
  std::memcpy(&secret, reinterpret_cast<const void*>(getauxval(AT_RANDOM)), sizeof secret);
  return secret;
}

const std::uint64_t kSecret = secretOfTheRun();

}  // namespace

std::uint32_t hashOf(std::string_view text) {
  return static_cast<std::uint32_t>(XXH3_64bits_withSeed(text.data(), text.size(), kSecret));
}

// A product by a secret odd number would be cheaper, but now and then puts regular numbers side by
// side: all channels of a plant, in one run of many.
std::uint32_t hashOf(std::int32_t number) {
  return static_cast<std::uint32_t>(XXH3_64bits_withSeed(&number, sizeof number, kSecret));
}

}  // namespace quenfold
