#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "app/key_hash.h"

namespace quenfold {

/// A list in insertion order whose items are found by a key: `keyOf` is a member pointer or a
/// function that gives an item's key, `hashOf` its hash of 32 bits. A short list is searched from
/// its front; beside a longer one stands an index, so that finding and appending take constant
/// time. The item found is the first with that key, provided that no two were appended with the
/// same one. An item's key must not change as long as the list is searched. The distribution's
/// ordered hash map (libtsl-ordered-map-dev) was tried: equal for the port labels, 45 % dearer for
/// the many tiny lists of the tree.
template <typename Item, auto keyOf>
class IndexedList {
 public:
  /// The item with that key, or null. Valid until the next append.
  template <typename Key>
  Item* find(const Key& key) {
    const std::size_t position = index_ ? indexed(key, hashOf(key)) : searched(key);
    return position == items_.size() ? nullptr : &items_[position];
  }

  /// The new item; valid until the next append. Its key must not be in the list yet. Where memory
  /// runs out the list stays as it was.
  Item& append(Item item) {
    const std::uint32_t hash = index_ ? hashOf(std::invoke(keyOf, item)) : kNoHash;
    return appendHashed(std::move(item), hash);
  }

  /// The item with that key, appended as `make()` gives it when there is none.
  template <typename Key, typename Make>
  Item& findOrAppend(const Key& key, Make make) {
    const Sought sought = seek(key);
    return sought.position == items_.size() ? appendHashed(make(), sought.hash)
                                            : items_[sought.position];
  }

  [[nodiscard]] std::size_t size() const { return items_.size(); }
  [[nodiscard]] bool empty() const { return items_.empty(); }
  const Item& operator[](std::size_t position) const { return items_[position]; }
  auto begin() { return items_.begin(); }
  auto end() { return items_.end(); }
  [[nodiscard]] auto begin() const { return items_.begin(); }
  [[nodiscard]] auto end() const { return items_.end(); }

 private:
  static constexpr std::size_t kSearched = 16;
  static constexpr std::uint32_t kNoHash = 0;  // where nobody asks for one
  static constexpr unsigned kFirstBits = 6;
  static_assert((std::size_t{1} << kFirstBits) > 2 * kSearched, "half of the first table is free");
  // As many small items as fit the smallest block that a 64-bit malloc hands out.
  static constexpr std::size_t kFirstItems = std::max<std::size_t>(2, 24 / sizeof(Item));

  [[nodiscard]] decltype(auto) keyAt(std::size_t position) const {
    return std::invoke(keyOf, items_[position]);
  }

  /// A table of positions, at least half of it free. An item's place is the first free one from
  /// where its hash points to. The hashes stand beside the positions, so that only a key that is
  /// most likely the right one is compared and a larger table takes no hashing.
  struct Index {
    struct Place {
      std::uint32_t item = 0;  // position + 1, or 0 where free
      std::uint32_t hash = kNoHash;
    };
    explicit Index(unsigned sizeBits) : places(std::size_t{1} << sizeBits), bits(sizeBits) {}

    std::vector<Place> places;
    unsigned bits;  // the table's size is 2 to this
    std::size_t lastFound = 0;
  };

  /// Where a key stands, or the list's size; its hash as far as it had to be computed.
  struct Sought {
    std::size_t position;
    std::uint32_t hash;
  };

  template <typename Key>
  [[nodiscard]] Sought seek(const Key& key) const {
    if (!index_) {
      return {searched(key), kNoHash};
    }
    if (keyAt(index_->lastFound) == key) {
      return {index_->lastFound, kNoHash};
    }
    const std::uint32_t hash = hashOf(key);
    return {indexed(key, hash), hash};
  }

  template <typename Key>
  [[nodiscard]] std::size_t searched(const Key& key) const {
    std::size_t position = 0;
    while (position < items_.size() && !(keyAt(position) == key)) {
      ++position;
    }
    return position;
  }

  [[nodiscard]] std::size_t firstPlace(std::uint32_t hash) const {
    return hash >> (std::numeric_limits<std::uint32_t>::digits - index_->bits);
  }

  [[nodiscard]] std::size_t nextPlace(std::size_t place) const {
    return (place + 1) % index_->places.size();
  }

  template <typename Key>
  [[nodiscard]] std::size_t indexed(const Key& key, std::uint32_t hash) const {
    for (std::size_t place = firstPlace(hash);; place = nextPlace(place)) {
      const auto [item, itsHash] = index_->places[place];
      if (item == 0) {
        return items_.size();
      }
      if (itsHash == hash && keyAt(item - 1) == key) {
        return index_->lastFound = item - 1;
      }
    }
  }

  /// The hash is of no meaning as long as there is no index.
  Item& appendHashed(Item&& item, std::uint32_t hash) {
    if (items_.capacity() == 0) {
      items_.reserve(kFirstItems);
    }
    makeIndexRoom();
    if (index_ && items_.size() == kSearched) {
      hash = hashOf(std::invoke(keyOf, item));
    }
    items_.push_back(std::move(item));
    if (index_) {
      addToIndex(items_.size() - 1, hash);
    }
    return items_.back();
  }

  /// For one item more: what may fail comes before the item is in the list.
  void makeIndexRoom() {
    if (!index_ && items_.size() == kSearched) {
      buildIndex();
    } else if (index_ && 2 * (items_.size() + 1) > index_->places.size()) {
      growIndex();
    }
  }

  void buildIndex() {
    index_ = std::make_unique<Index>(kFirstBits);
    for (std::size_t position = 0; position < items_.size(); ++position) {
      addToIndex(position, hashOf(keyAt(position)));
    }
  }

  void growIndex() {
    const auto old = std::exchange(index_, std::make_unique<Index>(index_->bits + 1));
    for (const typename Index::Place& place : old->places) {
      if (place.item != 0) {
        addToIndex(place.item - 1, place.hash);
      }
    }
  }

  void addToIndex(std::size_t position, std::uint32_t hash) {
    std::size_t place = firstPlace(hash);
    while (index_->places[place].item != 0) {
      place = nextPlace(place);
    }
    index_->places[place] = {static_cast<std::uint32_t>(position + 1), hash};
    index_->lastFound = position;
  }

  std::vector<Item> items_;
  std::unique_ptr<Index> index_;  // null as long as the list is short
};

}  // namespace quenfold
