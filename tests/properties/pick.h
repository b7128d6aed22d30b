#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

#include "generator/random.h"

namespace quenfold::properties {

/// A place in a container that is not empty.
template <typename Items>
std::size_t pickPlace(const Items& items, generator::Random& random) {
  return random.below(static_cast<std::uint32_t>(items.size()));
}

/// What is at such a place.
template <typename Items>
auto& pick(Items& items, generator::Random& random) {
  return *std::next(items.begin(), static_cast<std::ptrdiff_t>(pickPlace(items, random)));
}

}  // namespace quenfold::properties
