#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace quenfold {

inline std::size_t hashOf(std::string_view text) { return std::hash<std::string_view>()(text); }
inline std::size_t hashOf(std::int32_t number) { return std::hash<std::int32_t>()(number); }

/// A list in insertion order whose items are found by a key: `keyOf` is a member pointer or a
/// function that gives an item's key, `hashOf` its hash. A short list is searched from its front;
/// beside a longer one stands an index, so that finding and appending take constant time. The item
/// found is the first with that key, provided that no two were appended with the same one. An
/// item's key must not change as long as the list is searched.
template <typename Item, auto keyOf>
class IndexedList {
 public:
  /// The item with that key, or null. Valid until the next append.
  template <typename Key>
  Item* find(const Key& key) {
    const std::size_t position = index_ ? indexed(key) : searched(key);
    return position == items_.size() ? nullptr : &items_[position];
  }

  /// The new item; valid until the next append. Its key must not be in the list yet.
  Item& append(Item item) {
    if (items_.capacity() == 0) {
      items_.reserve(kFirstItems);
    }
    items_.push_back(std::move(item));
    if (index_ && 2 * items_.size() <= index_->places.size()) {
      addToIndex(items_.size() - 1);
    } else if (items_.size() > kSearched) {
      buildIndex();
    }
    return items_.back();
  }

  /// The item with that key, appended as `make()` gives it when there is none.
  template <typename Key, typename Make>
  Item& findOrAppend(const Key& key, Make make) {
    Item* const found = find(key);
    return found != nullptr ? *found : append(make());
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
  static constexpr unsigned kFirstBits = 6;  // more than twice the items of a short list
  // As many small items as fit the smallest block that a 64-bit malloc hands out.
  static constexpr std::size_t kFirstItems = std::max<std::size_t>(2, 24 / sizeof(Item));

  [[nodiscard]] decltype(auto) keyAt(std::size_t position) const {
    return std::invoke(keyOf, items_[position]);
  }

  template <typename Key>
  [[nodiscard]] std::size_t searched(const Key& key) const {
    std::size_t position = 0;
    while (position < items_.size() && !(keyAt(position) == key)) {
      ++position;
    }
    return position;
  }

  /// A table of positions, at least half of it free. An item's place is the first free one from
  /// where its hash points to; what follows it was taken later.
  struct Index {
    std::vector<std::uint32_t> places;  // position + 1, or 0 where free
    unsigned bits = 0;                  // the table's size is 2 to this
    std::size_t lastFound = 0;
  };

  /// By the golden ratio, so that regular hashes spread as well.
  [[nodiscard]] std::size_t firstPlace(std::size_t hash) const {
    constexpr std::uint64_t kRatio = 0x9E3779B97F4A7C15;
    return static_cast<std::size_t>((hash * kRatio) >> (64 - index_->bits));
  }

  [[nodiscard]] std::size_t nextPlace(std::size_t place) const {
    return (place + 1) % index_->places.size();
  }

  template <typename Key>
  [[nodiscard]] std::size_t indexed(const Key& key) const {
    if (keyAt(index_->lastFound) == key) {
      return index_->lastFound;
    }
    std::size_t place = firstPlace(hashOf(key));
    for (; index_->places[place] != 0; place = nextPlace(place)) {
      const std::size_t position = index_->places[place] - 1;
      if (keyAt(position) == key) {
        index_->lastFound = position;
        return position;
      }
    }
    return items_.size();
  }

  void buildIndex() {
    auto index = std::make_unique<Index>();
    index->bits = index_ ? index_->bits + 1 : kFirstBits;
    index->places.resize(std::size_t{1} << index->bits);
    index_ = std::move(index);
    for (std::size_t position = 0; position < items_.size(); ++position) {
      addToIndex(position);
    }
  }

  void addToIndex(std::size_t position) {
    std::size_t place = firstPlace(hashOf(keyAt(position)));
    while (index_->places[place] != 0) {
      place = nextPlace(place);
    }
    index_->places[place] = static_cast<std::uint32_t>(position + 1);
    index_->lastFound = position;
  }

  std::vector<Item> items_;
  std::unique_ptr<Index> index_;  // null as long as the list is short
};

}  // namespace quenfold
