#include <gtest/gtest.h>

#include <string>

#include "generator/random.h"
#include "logicalio/port_key_printer.h"

namespace quenfold {
namespace {

/// Two names of each kind, one bit a field: the channel is the lowest, the device the highest.
PortDict oneBitAField() {
  PortDict dict;
  dict.bits = {1, 1, 1, 1, 1, 1};
  dict.computeShifts();
  for (const char* const name : {"a", "b"}) {
    dict.type.add(std::string("t") + name);
    dict.portPrefix.add(std::string("p") + name);
    dict.slot.add(std::string("s") + name);
    dict.device.add(std::string("d") + name);
  }
  return dict;
}

TEST(PortKeyPrinter, PrintsKeyAfterKey) {
  const PortDict dict = oneBitAField();
  PortKeyPrinter printer(dict);
  EXPECT_EQ(printer.print(0b000000), "da.sa.pa[0].ta.ch0");
  EXPECT_EQ(printer.print(0b000001), "da.sa.pa[0].ta.ch1");
  EXPECT_EQ(printer.print(0b000110), "da.sa.pa[1].tb.ch0");
  EXPECT_EQ(printer.print(0b001110), "da.sa.pb[1].tb.ch0");
  EXPECT_EQ(printer.print(0b011110), "da.sb.pb[1].tb.ch0");
  EXPECT_EQ(printer.print(0b111110), "db.sb.pb[1].tb.ch0");
  EXPECT_EQ(printer.print(0b000000), "da.sa.pa[0].ta.ch0");
}

TEST(PortKeyPrinter, KeepsAHeadWithoutNames) {
  PortDict dict;
  dict.bits = {2, 0, 0, 0, 0, 1};
  dict.computeShifts();
  dict.device.add("d");
  PortKeyPrinter printer(dict);
  EXPECT_EQ(printer.print(7), "..[0]..ch3");
  EXPECT_EQ(printer.print(6), "..[0]..ch2");
  EXPECT_EQ(printer.print(2), "d..[0]..ch2");
}

TEST(PortKeyPrinter, NoKeyDependsOnTheOneBefore) {
  const PortDict dict = oneBitAField();
  generator::Random random = generator::seededRandom(1);
  PortKeyPrinter printer(dict);
  for (int round = 0; round < 10000; ++round) {
    const std::uint64_t packed = random.below(64);
    ASSERT_EQ(printer.print(packed), PortKeyPrinter(dict).print(packed)) << "round " << round;
  }
}

}  // namespace
}  // namespace quenfold
