#include <gtest/gtest.h>

#include "database/expand_tree.h"
#include "support/port_trees.h"
#include "support/scratch.h"

namespace quenfold::database {
namespace {

using test::sourcesOf;

std::string messageFor(const unpacking::PortTree& tree) {
  PackedDatabase database;
  database.treePath = "db/tree.json";
  database.tree = tree;
  return test::messageOf([&] { expandTree(database, database.portLabels); });
}

TEST(ExpandTree, NamesTheFileAndTheFirstPortAtFault) {
  EXPECT_EQ(messageFor({{"A", {{"s", {sourcesOf("in[{}]", {1, 1}, {{"a", {1, 1}}})}}}},
                        {"B",
                         {{"s", {sourcesOf("in[{}]", {1, 1}, {{"a", {1, 1}}})}},
                          {"t",
                           {sourcesOf("x[{}]", {1, 1}, {{"a", {1, 1}}}),
                            sourcesOf("in}[{}]", {1, 1}, {{"a", {1, 1}}}),
                            sourcesOf("in{[{}]", {1, 1}, {{"a", {1, 1}}})}}}}}),
            "db/tree.json: B.t.in}[]: unmatched '}' in format string");
}

TEST(ExpandTree, NamesTheFileOfWhatIsTooLarge) {
  EXPECT_EQ(messageFor({{"A", {{"s", {sourcesOf("in[{0:{0}}]", {1, 9000}, {{"a", {1, 1}}})}}}}}),
            "db/tree.json: port pattern too wide: more than 4096");
}

TEST(PatternText, LeavesThePlaceOfTheNumberOut) {
  EXPECT_EQ(patternText(sourcesOf("in[{}]", {1, 1}, {})), "in[]");
  EXPECT_EQ(patternText(sourcesOf("a[{}][{}]", {1, 1}, {})), "a[][{}]");
  EXPECT_EQ(patternText(sourcesOf("plain{}", {1, 1}, {})), "plain{}");
}

}  // namespace
}  // namespace quenfold::database
