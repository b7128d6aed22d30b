#include "generator/slot.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "generator/port_tables.h"

namespace quenfold::generator {
namespace {

struct LayoutOrder {
  bool operator()(const Layout& left, const Layout& right) const {
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](const TypeChannels& one, const TypeChannels& other) {
                                          return std::array{one.type, one.first, one.last} <
                                                 std::array{other.type, other.first, other.last};
                                        });
  }
};

struct PrefixCount {
  std::uint16_t prefix = 0;
  std::uint32_t ports = 0;
};

/// How many ports of which prefix have one layout.
struct LayoutClass {
  Layout layout;
  std::vector<PrefixCount> prefixes;
};

using Draft = std::map<Layout, std::map<std::uint16_t, std::uint32_t>, LayoutOrder>;

std::uint32_t entriesOf(const Layout& layout) {
  std::uint32_t entries = 0;
  for (const TypeChannels& channels : layout) {
    entries += channels.last - channels.first + 1U;
  }
  return entries;
}

TypeChannels drawChannels(std::uint16_t type, Random& random) {
  const std::uint32_t count = random.between(1, kPortTypes[type].maxChannels);
  const std::uint32_t first = random.percent(10) ? random.between(0, kLastChannel + 1 - count) : 1;
  return {type, static_cast<std::uint16_t>(first), static_cast<std::uint16_t>(first + count - 1)};
}

Layout oneChannel(Random& random) {
  return {{static_cast<std::uint16_t>(random.below(kPortTypes.size())), 1, 1}};
}

Layout drawLayout(Random& random) {
  Layout layout;
  std::uint16_t index = 0;
  for (const PortType& type : kPortTypes) {
    if (random.percent(type.percent)) {
      layout.push_back(drawChannels(index, random));
    }
    ++index;
  }
  return layout.empty() ? oneChannel(random) : layout;
}

/// Every other port is a plain "in" or "out", the first two prefixes.
std::uint16_t drawPrefix(Random& random) {
  const std::uint32_t count = random.percent(50) ? 2 : std::uint32_t{kPortPrefixes.size()};
  return static_cast<std::uint16_t>(random.below(count));
}

Draft draftSlot(std::uint32_t entries, Random& random) {
  const std::uint32_t longestRun = std::clamp(entries / 12U, 1U, 16U);
  Draft draft;
  while (entries > 0) {
    Layout layout = drawLayout(random);
    if (entriesOf(layout) > entries) {
      layout = oneChannel(random);
    }
    const std::uint32_t each = entriesOf(layout);
    const std::uint32_t ports = std::min(random.between(1, longestRun), entries / each);
    draft[std::move(layout)][drawPrefix(random)] += ports;
    entries -= ports * each;
  }
  return draft;
}

/// Layouts that begin with the same type, and the prefixes of a layout, may stand in any order.
std::vector<LayoutClass> arrange(const Draft& draft, Random& random) {
  std::vector<LayoutClass> classes;
  for (const auto& [layout, prefixes] : draft) {
    LayoutClass& added = classes.emplace_back(LayoutClass{layout, {}});
    for (const auto& [prefix, ports] : prefixes) {
      added.prefixes.push_back({prefix, ports});
    }
    random.shuffle(added.prefixes);
  }
  random.shuffle(classes);
  std::stable_sort(classes.begin(), classes.end(), [](const auto& left, const auto& right) {
    return left.layout.front().type < right.layout.front().type;
  });
  return classes;
}

}  // namespace

std::vector<PortGroup> buildSlot(std::uint32_t entries, Random& random) {
  std::array<std::uint32_t, kPortPrefixes.size()> used{};
  std::vector<PortGroup> groups;
  for (const LayoutClass& layoutClass : arrange(draftSlot(entries, random), random)) {
    for (const PrefixCount& run : layoutClass.prefixes) {
      std::uint32_t& last = used[run.prefix];
      const std::uint32_t first = last + 1 + (random.percent(25) ? random.between(1, 3) : 0);
      last = first + run.ports - 1;
      groups.push_back({run.prefix, static_cast<std::int32_t>(first),
                        static_cast<std::int32_t>(last), layoutClass.layout});
    }
  }
  return groups;
}

}  // namespace quenfold::generator
