#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <unordered_map>
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
    if (lastFound_ < items_.size() && keyAt(lastFound_) == key) {
      return &items_[lastFound_];
    }
    const std::size_t position = index_ ? indexed(key) : searched(key);
    if (position == items_.size()) {
      return nullptr;
    }
    lastFound_ = position;
    return &items_[position];
  }

  /// The new item; valid until the next append. Its key must not be in the list yet.
  Item& append(Item item) {
    items_.push_back(std::move(item));
    lastFound_ = items_.size() - 1;
    if (index_) {
      addToIndex(lastFound_);
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

  template <typename Key>
  [[nodiscard]] std::size_t indexed(const Key& key) const {
    const auto [first, last] = index_->equal_range(hashOf(key));
    for (auto entry = first; entry != last; ++entry) {
      if (keyAt(entry->second) == key) {
        return entry->second;
      }
    }
    return items_.size();
  }

  void buildIndex() {
    index_ = std::make_unique<Index>();
    for (std::size_t position = 0; position < items_.size(); ++position) {
      addToIndex(position);
    }
  }

  void addToIndex(std::size_t position) {
    index_->emplace(hashOf(keyAt(position)), static_cast<std::uint32_t>(position));
  }

  using Index = std::unordered_multimap<std::size_t, std::uint32_t>;  // hash to position

  std::vector<Item> items_;
  std::size_t lastFound_ = 0;
  std::unique_ptr<Index> index_;
};

}  // namespace quenfold
