#include <gtest/gtest.h>

#include "database/columns.h"

namespace quenfold::database {
namespace {

TEST(AlignedLines, MakesColumnsAsWideAsTheirWidestCell) {
  EXPECT_EQ(alignedLines({{"a", "1", "x"}, {"K\u00F6ln", "100", "y"}, {"", "22", ""}},
                         {Side::kLeft, Side::kRight, Side::kLeft}),
            (Lines{"a       1  x", "K\u00F6ln  100  y", "       22"}));
}

TEST(AlignedLines, TakesShorterRows) {
  EXPECT_EQ(alignedLines({{"ab"}, {"a", "b"}, {}}, {Side::kLeft, Side::kLeft}),
            (Lines{"ab", "a   b", ""}));
  EXPECT_EQ(alignedLines({}, {Side::kLeft}), Lines{});
}

TEST(Wrapped, FillsLines) {
  EXPECT_EQ(wrapped({"one,", "two,", "three,", "four"}, 10),
            (Lines{"one, two,", "three,", "four"}));
  EXPECT_EQ(wrapped({"one,", "two,", "three,", "four"}, 11), (Lines{"one, two,", "three, four"}));
}

TEST(Wrapped, LeavesALongWordWhole) {
  EXPECT_EQ(wrapped({"a", "longest", "b"}, 3), (Lines{"a", "longest", "b"}));
  EXPECT_EQ(wrapped({}, 3), Lines{});
}

TEST(Wrapped, CountsCharacters) {
  EXPECT_EQ(wrapped({"K\u00F6ln", "\u00D6"}, 6), Lines{"K\u00F6ln \u00D6"});
}

}  // namespace
}  // namespace quenfold::database
