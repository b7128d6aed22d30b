#pragma once

#include <cstdint>
#include <vector>

#include "generator/random.h"

namespace quenfold::generator {

/// The channels `first` to `last` of the type `kPortTypes[type]`.
struct TypeChannels {
  std::uint16_t type = 0;
  std::uint16_t first = 0;
  std::uint16_t last = 0;
};

/// What a port carries: types ascending, none twice.
using Layout = std::vector<TypeChannels>;

/// The ports `first` to `last` of the prefix `kPortPrefixes[prefix]`, all of one layout.
struct PortGroup {
  std::uint16_t prefix = 0;
  std::int32_t first = 0;
  std::int32_t last = 0;
  Layout layout;
};

/// Groups with as many port entries (port times channel) as asked for, in the order in which
/// packing finds them again when the types are read one after the other: the groups of one layout
/// side by side, the layouts by their first type. A pair of layout and prefix occurs once; port
/// numbers begin at 1 and may leave gaps between groups.
std::vector<PortGroup> buildSlot(std::uint32_t entries, Random& random);

}  // namespace quenfold::generator
