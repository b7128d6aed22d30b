#include <gtest/gtest.h>

#include <array>
#include <new>
#include <string>

#include "app/indexed_list.h"
#include "support/colliding_keys.h"
#include "support/failing_new.h"

namespace quenfold {
namespace {

struct Named {
  std::string name;
  int value = 0;
};

using NamedList = IndexedList<Named, &Named::name>;

/// Short lists are searched, long ones indexed: both must answer alike.
class IndexedListOfSize : public testing::TestWithParam<int> {
 protected:
  static NamedList filled() {
    NamedList list;
    for (int i = 0; i < GetParam(); ++i) {
      list.append({"item" + std::to_string(i), i});
    }
    return list;
  }
};

TEST_P(IndexedListOfSize, KeepsInsertionOrder) {
  const NamedList list = filled();
  ASSERT_EQ(list.size(), static_cast<std::size_t>(GetParam()));
  EXPECT_EQ(list.empty(), GetParam() == 0);
  int expected = 0;
  for (const Named& item : list) {
    EXPECT_EQ(item.value, expected++);
  }
}

TEST_P(IndexedListOfSize, FindsEachItemAndNoOther) {
  NamedList list = filled();
  for (int i = GetParam() - 1; i >= 0; --i) {
    const Named* const found = list.find(std::string_view("item" + std::to_string(i)));
    ASSERT_NE(found, nullptr) << i;
    EXPECT_EQ(found->value, i);
  }
  EXPECT_EQ(list.find(std::string_view("item")), nullptr);
  EXPECT_EQ(list.find(std::string_view("item" + std::to_string(GetParam()))), nullptr);
}

TEST_P(IndexedListOfSize, FindsOrAppends) {
  NamedList list = filled();
  int made = 0;
  const auto make = [&made] {
    ++made;
    return Named{"new", -1};
  };
  EXPECT_EQ(list.findOrAppend(std::string_view("new"), make).value, -1);
  EXPECT_EQ(list.findOrAppend(std::string_view("new"), make).value, -1);
  EXPECT_EQ(made, 1);
  EXPECT_EQ(list.size(), static_cast<std::size_t>(GetParam()) + 1);
}

INSTANTIATE_TEST_SUITE_P(Sizes, IndexedListOfSize, testing::Values(0, 1, 15, 16, 17, 18, 1000));

std::int32_t sameNumber(std::int32_t number) { return number; }

TEST(IndexedList, HoldsNumbers) {
  IndexedList<std::int32_t, sameNumber> numbers;
  for (std::int32_t number = 40; number > -40; --number) {
    EXPECT_EQ(numbers.find(number), nullptr);
    numbers.append(number);
  }
  for (std::int32_t number = 40; number > -40; --number) {
    ASSERT_NE(numbers.find(number), nullptr);
    EXPECT_EQ(*numbers.find(number), number);
  }
  EXPECT_EQ(numbers.find(-40), nullptr);
  EXPECT_EQ(numbers[0], 40);
}

#if QUENFOLD_FAILING_NEW
using NumberList = IndexedList<std::int32_t, sameNumber>;

/// Whether memory runs out when the number is appended with so many requests granted.
bool appendFails(NumberList& list, std::int32_t number, std::size_t requestsAllowed) {
  const test::FailingNew failing(requestsAllowed);
  try {
    list.append(number);
    return false;
  } catch (const std::bad_alloc&) {
    return true;
  }
}

void expectNumbersUpTo(NumberList& list, std::int32_t last) {
  ASSERT_EQ(list.size(), static_cast<std::size_t>(last));
  for (std::int32_t number = 1; number <= last; ++number) {
    ASSERT_NE(list.find(number), nullptr) << number << " of " << last;
    ASSERT_EQ(*list.find(number), number);
  }
  ASSERT_EQ(list.find(last + 1), nullptr);
}

TEST(IndexedList, StaysAsItWasWhereMemoryEndsInAnAppend) {
  NumberList list;
  std::size_t failures = 0;
  for (std::int32_t number = 1; number <= 300; ++number) {
    std::size_t granted = 0;
    for (; appendFails(list, number, granted); ++granted) {
      ++failures;
      ASSERT_NO_FATAL_FAILURE(expectNumbersUpTo(list, number - 1));
    }
    ASSERT_NO_FATAL_FAILURE(expectNumbersUpTo(list, number));
  }
  // The items grow at 1, 7, 13, 25, ... of them, the index at 17, 33, 65, 129 and 257, two requests
  // each.
  EXPECT_EQ(failures, 17U);
}
#endif

/// Keys of one hash.
enum class Colliding { kFirst, kLast = 39 };

std::uint32_t hashOf(Colliding /*key*/) { return 7; }

Colliding sameKey(Colliding key) { return key; }

TEST(IndexedList, TellsKeysOfOneHashApart) {
  IndexedList<Colliding, sameKey> list;
  constexpr int kCount = static_cast<int>(Colliding::kLast);
  for (int i = 0; i < kCount; ++i) {
    list.append(Colliding{i});
    EXPECT_EQ(list.find(Colliding::kLast), nullptr) << i;
  }
  for (int i = 0; i < kCount; ++i) {
    const Colliding* const found = list.find(Colliding{i});
    ASSERT_NE(found, nullptr) << i;
    EXPECT_EQ(*found, Colliding{i});
  }
  EXPECT_EQ(list.find(Colliding::kLast), nullptr);
}

/// A key that counts how often it is compared and hashed.
template <typename Value>
struct Counted {
  Value value{};
  static inline std::size_t comparisons = 0;
  static inline std::size_t hashes = 0;
};
using CountedKey = Counted<std::int32_t>;
using CountedText = Counted<std::string>;

template <typename Value>
bool operator==(const Counted<Value>& a, const Counted<Value>& b) {
  ++Counted<Value>::comparisons;
  return a.value == b.value;
}

template <typename Value>
std::uint32_t hashOf(const Counted<Value>& key) {
  ++Counted<Value>::hashes;
  return quenfold::hashOf(key.value);
}

template <typename Key>
const Key& itself(const Key& key) {
  return key;
}

TEST(IndexedList, ComparesAsOftenForEachOfManyItemsAsForEachOfFew) {
  const auto comparisonsPerItem = [](std::int32_t count) {
    CountedKey::comparisons = 0;
    IndexedList<CountedKey, itself<CountedKey>> list;
    for (int round = 0; round < 2; ++round) {
      for (std::int32_t i = count; i > 0; --i) {
        list.findOrAppend(CountedKey{i}, [i] { return CountedKey{i}; });
      }
    }
    EXPECT_EQ(list.size(), static_cast<std::size_t>(count));
    return CountedKey::comparisons / static_cast<std::size_t>(count);
  };
  EXPECT_LE(comparisonsPerItem(1000), 10U);
  EXPECT_LE(comparisonsPerItem(100000), comparisonsPerItem(1000));
}

TEST(IndexedList, ComparesKeysThatWereMadeToCollideNoMoreThanOthers) {
  constexpr std::size_t kKeys = 500;
  CountedText::comparisons = 0;
  IndexedList<CountedText, itself<CountedText>> list;
  for (const std::string& text : test::WordsOfOneHash::make(kKeys)) {
    list.findOrAppend(CountedText{text}, [&text] { return CountedText{text}; });
  }
  ASSERT_EQ(list.size(), kKeys);
  EXPECT_LE(CountedText::comparisons / kKeys, 2U);
}

TEST(IndexedList, HashesNoKeyOfAShortListAndEachOfALongOneOnce) {
  IndexedList<CountedKey, itself<CountedKey>> list;
  const auto appendOrFind = [&list](std::int32_t value) {
    list.findOrAppend(CountedKey{value}, [value] { return CountedKey{value}; });
  };
  CountedKey::hashes = 0;
  for (std::int32_t i = 1; i <= 16; ++i) {
    appendOrFind(i);
    EXPECT_NE(list.find(CountedKey{1}), nullptr);
  }
  EXPECT_EQ(CountedKey::hashes, 0U);
  for (std::size_t i = 17; i <= 1000; ++i) {
    appendOrFind(static_cast<std::int32_t>(i));
    EXPECT_EQ(CountedKey::hashes, i);
  }
  appendOrFind(1000);
  EXPECT_EQ(CountedKey::hashes, 1000U) << "the key found last";
  appendOrFind(5);
  appendOrFind(5);
  EXPECT_EQ(CountedKey::hashes, 1001U) << "a key further back, then the one found last";
}

/// How many items the list takes before it moves the first.
template <typename Item, auto keyOf>
std::size_t firstRoom() {
  IndexedList<Item, keyOf> list;
  const Item* const first = &list.append(Item{0});
  do {
    list.append(Item{static_cast<char>(list.size())});
  } while (&list[0] == first);
  return list.size() - 1;
}

struct Large {
  std::array<char, 32> key;
};

char itsFirst(const Large& item) { return item.key.front(); }

char sameCharacter(char character) { return character; }

TEST(IndexedList, MakesRoomForASmallestBlockOrForTwo) {
  EXPECT_EQ((firstRoom<char, sameCharacter>()), 24U);
  EXPECT_EQ((firstRoom<Large, itsFirst>()), 2U);
}

}  // namespace
}  // namespace quenfold
