#include <gtest/gtest.h>

#include "database/summary_text.h"
#include "support/port_trees.h"

namespace quenfold::database {
namespace {

using test::dictOf;

TEST(SummaryText, SaysThatADatabaseIsEmpty) {
  Summary summary;
  summary.form = Form::kPacked;
  EXPECT_EQ(summaryText(summary),
            "A packed database\n"
            "    ports        0  inputs 0, outputs 0\n"
            "    port labels  0\n");
}

TEST(SummaryText, TellsAllThereIs) {
  const PortDict sources = dictOf({2, 1, 4, 0, 2, 11});
  const PortDict destinations = dictOf({1, 1, 5, 3, 2, 2});
  const DeviceLabel device = {"N1", "Desk", "N1"};
  const unpacking::SlotMap slots = {{"s", {test::sourcesOf("in[{}]", {1, 2}, {{"a", {1, 1}}})}}};
  Summary summary;
  summary.form = Form::kLegacy;
  summary.files = {{"matrices.json", 12345}, {"sources.json", 678}};
  summary.ports = 1000;
  summary.inputs = 600;
  summary.outputs = 399;
  summary.portLabels = 12;
  summary.devices = {{"N1", &device, &slots, 2}};
  summary.tables = {{"sources.json", 36, &sources}, {"destinations.json", 7, &destinations}};
  EXPECT_EQ(summaryText(summary),
            "A legacy database\n"
            "    ports                         1000  inputs 600, outputs 399, neither 1\n"
            "    port labels                     12\n"
            "    records of sources.json         36\n"
            "    records of destinations.json     7\n"
            "\n"
            "Devices\n"
            "    Desk  N1  2 ports\n"
            "        s  in[1..2]  source  a ch1\n"
            "\n"
            "Bits of a packed port\n"
            "    sources.json       20 of 32  ............DDDDDDDDDDDSSNNNNTCC"
            "  D 11  S 2  P 0  N 4  T 1  C 2\n"
            "    destinations.json  14 of 32  ..................DDSSPPPNNNNNTC"
            "  D 2   S 2  P 3  N 5  T 1  C 1\n"
            "    D device, S slot, P port name, N port number, T type, C channel, . free\n"
            "\n"
            "Bytes\n"
            "    matrices.json  12345\n"
            "    sources.json     678\n"
            "    together       13023\n");
}

TEST(SummaryText, SaysThatBitsAreLost) {
  const PortDict dict = dictOf({3, 3, 12, 4, 5, 6});
  Summary summary;
  summary.form = Form::kPacked;
  summary.tables = {{"sources.json", 1, &dict}};
  EXPECT_EQ(summaryText(summary),
            "A packed database\n"
            "    ports                    0  inputs 0, outputs 0\n"
            "    port labels              0\n"
            "    records of sources.json  1\n"
            "\n"
            "Bits of a packed port\n"
            "    sources.json  33 of 32  DDDDDSSSSSPPPPNNNNNNNNNNNNTTTCCC"
            "  D 6  S 5  P 4  N 12  T 3  C 3\n"
            "    sources.json has too many: bits above the 32 are lost, and its ports come back as "
            "others.\n"
            "    D device, S slot, P port name, N port number, T type, C channel, . free\n");
}

TEST(SummaryText, DrawsWidthsAsTheFileGivesThem) {
  const PortDict dict = dictOf({3, -1, 31, 0, 2147483647, 1});
  Summary summary;
  summary.tables = {{"sources.json", 0, &dict}};
  EXPECT_NE(summaryText(summary).find("2147483681 of 32  NNNNNNNNNNNNNNNNNNNNNNNNNNNNNCCC  "
                                      "D 1  S 2147483647  P 0  N 31  T 0  C 3\n"),
            std::string::npos)
      << summaryText(summary);
}

TEST(SummaryText, SpellsControlCharactersInFileNames) {
  Summary summary;
  summary.files = {{"a\n", 1}};
  EXPECT_NE(summaryText(summary).find("    a\\x0A     1\n    together  1\n"), std::string::npos);
}

}  // namespace
}  // namespace quenfold::database
