#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace quenfold::generator {

/// Choices drawn from a stream of even 32-bit words. The mapping is our own and uses fixed-width
/// arithmetic only, so that one stream means the same choices on every host and compiler.
class Random {
 public:
  using WordSource = std::function<std::uint32_t()>;

  explicit Random(WordSource words) : words_(std::move(words)) {}

  /// A number from 0 up to, not including, `bound`, which must not be 0.
  std::uint32_t below(std::uint32_t bound);

  /// A number from `low` to `high`, both included.
  std::uint32_t between(std::uint32_t low, std::uint32_t high);

  bool percent(std::uint32_t chance) { return below(100) < chance; }

  template <typename Item>
  void shuffle(std::vector<Item>& items) {
    for (std::size_t left = items.size(); left > 1; --left) {
      std::swap(items[left - 1], items[below(static_cast<std::uint32_t>(left))]);
    }
  }

 private:
  WordSource words_;
};

/// The stream of the standard 32-bit Mersenne twister, which the language defines bit by bit.
Random seededRandom(std::uint32_t seed);

}  // namespace quenfold::generator
