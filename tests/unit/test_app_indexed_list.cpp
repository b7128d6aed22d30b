#include <gtest/gtest.h>

#include <string>

#include "app/indexed_list.h"

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

}  // namespace
}  // namespace quenfold
