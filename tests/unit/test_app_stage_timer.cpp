#include <gtest/gtest.h>

#include <regex>

#include "app/stage_timer.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

class LogElapsed : public testing::Test {
 protected:
  ~LogElapsed() override { verbose = false; }
};

TEST_F(LogElapsed, DoesNothingUnlessVerbose) {
  const TimePoint start = now() - hours(1);
  TimePoint stage = start;
  verbose = false;
  EXPECT_EQ(test::standardErrorOf([&] { logElapsed(stage, "loaded File"); }), "");
  EXPECT_EQ(stage, start);
}

TEST_F(LogElapsed, PrintsWholeMillisecondsAndRestartsTheStage) {
  TimePoint stage = now() - hours(1);
  verbose = true;
  const TimePoint before = now();
  const std::string line = test::standardErrorOf([&] { logElapsed(stage, "loaded File"); });
  EXPECT_TRUE(std::regex_match(line, std::regex("loaded File: 36\\d{5} ms\n"))) << line;
  EXPECT_GE(stage, before);
}

TEST(MillisecondsSince, TruncatesTowardZero) {
  EXPECT_EQ(millisecondsSince(now() + hours(1)) / 1000, -3599);
  EXPECT_EQ(millisecondsSince(now() - milliseconds(1)) / 1000, 0);
}

}  // namespace
}  // namespace quenfold
