#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "app/limits.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

TEST(Limits, AreTheDocumentedOnes) {
  EXPECT_EQ(kMaxPorts, 67108864U);
  EXPECT_EQ(kMaxTextBytes, 8589934592U);
  EXPECT_EQ(kMaxReplacedBytes, 1073741824U);
  EXPECT_EQ(kMaxRecordBytes, 1073741824U);
}

TEST(Budget, GivesUpToItsLimit) {
  Budget budget("too many things", 10);
  budget.take(4);
  budget.takeTimes(3, 2);
  budget.take(0);
  EXPECT_EQ(test::messageOf([&] { budget.take(1); }), "too many things: more than 10");
}

TEST(Budget, CountsATimesWhatWasTakenBefore) {
  Budget budget("too many things", 10);
  budget.take(4);
  EXPECT_EQ(test::messageOf([&] { budget.takeTimes(2, 4); }), "too many things: more than 10");
  budget.takeTimes(2, 3);
}

TEST(Budget, IsNoRuntimeErrorThatIsOnlyReported) {
  Budget budget("too many things", 0);
  EXPECT_THROW(budget.take(1), std::length_error);
  EXPECT_THROW(budget.takeTimes(1, 1), std::length_error);
}

TEST(Budget, DoesNotWrap) {
  Budget budget("too many things", kLargest - 1);
  budget.take(1);
  EXPECT_THROW(budget.take(kLargest), std::length_error);
  EXPECT_THROW(budget.takeTimes(kLargest, kLargest), std::length_error);
  EXPECT_THROW(budget.takeTimes(std::uint64_t{1} << 32U, std::uint64_t{1} << 32U),
               std::length_error);
  budget.takeTimes(kLargest, 0);
  budget.takeTimes(0, kLargest);
  budget.take(kLargest - 2);
  EXPECT_THROW(budget.take(1), std::length_error);
}

TEST(RequireSize, NamesAFileBeyondTheLimit) {
  requireSize(kMaxTextBytes, "x");
  EXPECT_EQ(test::messageOf([] { requireSize(kMaxTextBytes + 1, "x"); }), "file too large: x");
}

}  // namespace
}  // namespace quenfold
