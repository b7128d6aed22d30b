#include "generator/random.h"

#include <random>

namespace quenfold::generator {

std::uint32_t Random::below(std::uint32_t bound) {
  return static_cast<std::uint32_t>((std::uint64_t{words_()} * bound) >> 32U);
}

std::uint32_t Random::between(std::uint32_t low, std::uint32_t high) {
  return low + below(high - low + 1);
}

Random seededRandom(std::uint32_t seed) {
  return Random(
      [engine = std::mt19937(seed)]() mutable { return static_cast<std::uint32_t>(engine()); });
}

}  // namespace quenfold::generator
