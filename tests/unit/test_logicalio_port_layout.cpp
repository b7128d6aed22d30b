#include <gtest/gtest.h>

#include "logicalio/port_layout.h"

namespace quenfold {
namespace {

constexpr const char* kLayout =
    "${device,1}.${slot,2}.${port_prefix,3}[#{port_id,4}].${type,5}.ch#{ch,6}";
constexpr FieldWidths kWidths = {6, 5, 4, 3, 2, 1};

TEST(PortLayout, SpellsAPortKeyWithTheWidthsOfItsFields) {
  EXPECT_EQ(layoutString(kWidths), kLayout);
}

TEST(PortLayout, IsReadBack) {
  FieldWidths widths{};
  EXPECT_TRUE(readLayout(kLayout, widths));
  EXPECT_EQ(widths, kWidths);
}

TEST(PortLayout, LeavesTheWidthsThatItDoesNotName) {
  FieldWidths widths = kWidths;
  EXPECT_TRUE(readLayout("#{ch,9} ${other,7} type", widths));
  EXPECT_EQ(widths, (FieldWidths{9, 5, 4, 3, 2, 1}));
}

TEST(PortLayout, MayNameNoFieldThatIsKnown) {
  FieldWidths widths = kWidths;
  EXPECT_TRUE(readLayout("device.${other,7}", widths));
  EXPECT_TRUE(readLayout("device$", widths));
  EXPECT_EQ(widths, kWidths);
}

TEST(PortLayout, HoldsNothingWithoutAField) {
  FieldWidths widths = kWidths;
  EXPECT_FALSE(readLayout("", widths));
  EXPECT_FALSE(readLayout("device.slot", widths));
  EXPECT_EQ(widths, kWidths);
}

}  // namespace
}  // namespace quenfold
