#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "app/indexed_list.h"

namespace quenfold::database {

/// Those of a list that have one key: the first of them that is not paired off yet, or the list's
/// size.
template <typename Key>
struct Namesakes {
  Key key;
  std::size_t next;
};

/// What is done with those that have one key in both lists, and with those of one list only.
template <typename Both, typename Added, typename Removed>
struct PairVisitor {
  Both both;        // both(before, after)
  Added added;      // added(after)
  Removed removed;  // removed(before)
};

template <typename Both, typename Added, typename Removed>
PairVisitor(Both, Added, Removed) -> PairVisitor<Both, Added, Removed>;

/// Visits every item of `to` in its order, with what has the same key in `from`: the n-th of a key
/// goes with the n-th. Then what is left of `from` in its order. One look-up an item, however many
/// have one key.
template <typename Item, typename Key, typename Visitor>
void forEachPair(const std::vector<Item>& from, const std::vector<Item>& to, Key Item::*key,
                 const Visitor& visitor) {
  using Named = Namesakes<Key>;
  IndexedList<Named, &Named::key> unpaired;
  std::vector<std::size_t> following(from.size());
  for (std::size_t position = from.size(); position-- > 0;) {
    const Key& itsKey = from[position].*key;
    Named& named = unpaired.findOrAppend(itsKey, [&] { return Named{itsKey, from.size()}; });
    following[position] = std::exchange(named.next, position);
  }
  std::vector<bool> paired(from.size());
  for (const Item& after : to) {
    Named* const named = unpaired.find(after.*key);
    if (named == nullptr || named->next == from.size()) {
      visitor.added(after);
      continue;
    }
    const std::size_t position = std::exchange(named->next, following[named->next]);
    paired[position] = true;
    visitor.both(from[position], after);
  }
  for (std::size_t position = 0; position < from.size(); ++position) {
    if (!paired[position]) {
      visitor.removed(from[position]);
    }
  }
}

}  // namespace quenfold::database
