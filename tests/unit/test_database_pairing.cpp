#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/pairing.h"

namespace quenfold::database {
namespace {

struct Item {
  std::int32_t key;
  std::string_view name;
};

using Items = std::vector<Item>;
using Pairs = std::vector<std::pair<std::string_view, std::string_view>>;

/// The names of the pairs in their order, "-" for what is missing.
Pairs pairsOf(const Items& from, const Items& to) {
  Pairs pairs;
  forEachPair(from, to, &Item::key,
              PairVisitor{[&](const Item& before, const Item& after) {
                            pairs.emplace_back(before.name, after.name);
                          },
                          [&](const Item& after) { pairs.emplace_back("-", after.name); },
                          [&](const Item& before) { pairs.emplace_back(before.name, "-"); }});
  return pairs;
}

TEST(ForEachPair, BringsTogetherWhatHasOneKey) {
  EXPECT_EQ(pairsOf({{1, "a"}, {2, "b"}, {3, "c"}, {4, "d"}}, {{4, "D"}, {2, "B"}, {5, "E"}}),
            (Pairs{{"d", "D"}, {"b", "B"}, {"-", "E"}, {"a", "-"}, {"c", "-"}}));
}

TEST(ForEachPair, BringsTheNthTogetherWithTheNth) {
  EXPECT_EQ(pairsOf({{1, "a"}, {2, "b"}, {1, "c"}, {1, "d"}}, {{1, "A"}, {2, "B"}, {1, "C"}}),
            (Pairs{{"a", "A"}, {"b", "B"}, {"c", "C"}, {"d", "-"}}));
  EXPECT_EQ(pairsOf({{1, "a"}}, {{1, "A"}, {1, "B"}}), (Pairs{{"a", "A"}, {"-", "B"}}));
}

TEST(ForEachPair, TakesEmptyLists) {
  EXPECT_EQ(pairsOf({}, {}), Pairs{});
  EXPECT_EQ(pairsOf({{1, "a"}}, {}), (Pairs{{"a", "-"}}));
  EXPECT_EQ(pairsOf({}, {{1, "A"}}), (Pairs{{"-", "A"}}));
}

// Where each looked for its like among all of them, it would take hours.
TEST(ForEachPair, TakesManyOfOneKey) {
  constexpr std::size_t kMany = 300000;
  const Items many(kMany, {7, "a"});
  std::size_t pairs = 0;
  const auto fail = [](const Item&) { ADD_FAILURE() << "left alone"; };
  forEachPair(many, many, &Item::key,
              PairVisitor{[&](const Item& before, const Item& after) {
                            pairs += &before == &after ? 1U : 0U;
                          },
                          fail, fail});
  EXPECT_EQ(pairs, kMany);
}

}  // namespace
}  // namespace quenfold::database
