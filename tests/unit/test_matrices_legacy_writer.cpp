#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>

#include "matrices/legacy_writer.h"
#include "support/heap.h"
#include "support/scratch.h"
#include "support/texts.h"

namespace quenfold::unpacking {
namespace {

const DeviceNames kDesk = {"D", "N", "I"};

PortTypeGroup groupOf(std::string pattern, Range ports, Direction direction) {
  return {std::move(pattern), ports.first, ports.last, {}, direction};
}

const PortTypeGroup kInputs = groupOf("P{}", {1, 2}, Direction::kSource);
const PortTypeGroup kOutput = groupOf("out", {1, 1}, Direction::kDestination);
const PortTypeGroup kOther = groupOf("x", {1, 1}, Direction::kUnknown);
const PortTypeGroup kQuoted = groupOf("\"[{}]", {1, 1}, Direction::kSource);
const PortTypeGroup kControl = groupOf("{:c}", {7, 7}, Direction::kSource);

/// The blocks' ports with labels by creation order, in one matrix "M" of serial "N".
ExpandedTree treeOf(const std::vector<PortBlock>& blocks,
                    std::vector<std::string_view> labels = {}) {
  ExpandedTree tree;
  tree.labels = std::move(labels);
  tree.longestName = 100;
  for (const PortBlock& block : blocks) {
    tree.blocks.push_back({kDesk, block, tree.ports});
    tree.ports += static_cast<std::size_t>((block.group->last - block.group->first + 1) *
                                           (block.channels.last - block.channels.first + 1));
  }
  MatrixEntry& matrix = tree.matrices["M"];
  matrix.serialnumber = "N";
  for (const ExpandedBlock& block : tree.blocks) {
    matrix.blocks.push_back(&block);
  }
  return tree;
}

std::string textOf(const ExpandedTree& tree, void (LegacyWriter::*write)(OutputFile& out)) {
  LegacyWriter writer(tree);
  return test::textOf([&](OutputFile& out) { (writer.*write)(out); });
}

/// What stands between the brackets of a matrix's ports.
std::string portsOf(const ExpandedTree& tree) {
  const std::string text = textOf(tree, &LegacyWriter::writeMatrices);
  const std::string front =
      R"({"Config":{"version":8,"Matrices":[{"id":0,"name":"M","serialnumber":"N","ports":[)";
  const std::string back = "]}]}}";
  EXPECT_EQ(text.substr(0, front.size()), front);
  EXPECT_EQ(text.substr(text.size() - back.size()), back);
  return text.substr(front.size(), text.size() - front.size() - back.size());
}

TEST(AvailableTexts, MapTheShownNameToThePortOfTheirDirection) {
  const ExpandedTree tree = treeOf({{"A", &kInputs, "T", {1, 1}},
                                    {"A", &kOther, "T", {1, 1}},
                                    {"A", &kOutput, "T", {3, 4}},
                                    {"B", &kInputs, "U", {1, 1}}},
                                   {"", "Vox", "", "", "Main", "", ""});
  EXPECT_EQ(textOf(tree, &LegacyWriter::writeAvailableInputs),
            R"([{"k":"D.A.P1.T.ch1","v":"D.A.P1.T.ch1"},{"k":"Vox","v":"D.A.P2.T.ch1"},)"
            R"({"k":"D.B.P1.U.ch1","v":"D.B.P1.U.ch1"},{"k":"D.B.P2.U.ch1","v":"D.B.P2.U.ch1"}])");
  EXPECT_EQ(textOf(tree, &LegacyWriter::writeAvailableOutputs),
            R"([{"k":"D.A.out.T.ch3","v":"D.A.out.T.ch3"},{"k":"Main","v":"D.A.out.T.ch4"}])");
}

TEST(PortLabelsText, MapsThePortToItsSerialName) {
  EXPECT_EQ(textOf(treeOf({{"A", &kInputs, "T", {1, 1}}, {"A", &kOther, "T", {1, 1}}}),
                   &LegacyWriter::writePortLabels),
            R"([{"k":"D.A.P1.T.ch1","v":"N.A.P1.T.ch1"},{"k":"D.A.P2.T.ch1","v":"N.A.P2.T.ch1"},)"
            R"({"k":"D.A.x.T.ch1","v":"N.A.x.T.ch1"}])");
}

TEST(UserPortLabelsText, PairsThePortWithItsShownName) {
  EXPECT_EQ(
      textOf(treeOf({{"A", &kInputs, "T", {1, 1}}}, {"", "Vox"}),
             &LegacyWriter::writeUserPortLabels),
      R"([{"port":"D.A.P1.T.ch1","label":"D.A.P1.T.ch1"},{"port":"D.A.P2.T.ch1","label":"Vox"}])");
}

TEST(LegacyWriter, WritesEmptyListsWithoutPorts) {
  const ExpandedTree tree;
  for (const auto write :
       {&LegacyWriter::writeAvailableInputs, &LegacyWriter::writeAvailableOutputs,
        &LegacyWriter::writePortLabels, &LegacyWriter::writeUserPortLabels}) {
    EXPECT_EQ(textOf(tree, write), "[]");
  }
  EXPECT_EQ(textOf(tree, &LegacyWriter::writeMatrices),
            R"({"Config":{"version":8,"Matrices":[]}})");
}

TEST(LegacyWriter, KeptOnPurposeHandBuiltTextsEscapeNothing) {
  const ExpandedTree tree = treeOf({{"A", &kQuoted, "T", {1, 1}}}, {"a\\b\n"});
  EXPECT_EQ(textOf(tree, &LegacyWriter::writeAvailableInputs),
            "[{\"k\":\"a\\b\n\",\"v\":\"D.A.\"[1].T.ch1\"}]");
  EXPECT_EQ(textOf(tree, &LegacyWriter::writePortLabels),
            "[{\"k\":\"D.A.\"[1].T.ch1\",\"v\":\"N.A.\"[1].T.ch1\"}]");
  EXPECT_EQ(textOf(tree, &LegacyWriter::writeUserPortLabels),
            "[{\"port\":\"D.A.\"[1].T.ch1\",\"label\":\"a\\b\n\"}]");
}

TEST(LegacyWriter, AllocatesNothingOnceConstructed) {
  // A type that is kept beside the string itself.
  const ExpandedTree tree = treeOf({{"A", &kInputs, "uncompressed-video", {1, 20}},
                                    {"A", &kControl, "uncompressed-video", {1, 1}}});
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("out");
  LegacyWriter writer(tree);
  OutputFile out(path);
  const std::size_t before = test::heapInUse();
  writer.writeMatrices(out);
  writer.writeUserPortLabels(out);
  EXPECT_EQ(test::heapInUse(), before);
}

TEST(LegacyWriter, RefusesNamesThatTheLibraryCannotCountBeforeAnyFile) {
  ExpandedTree tree;
  tree.longestName = static_cast<std::size_t>(std::uint64_t{1} << 32U);
  if (tree.longestName == 0) {
    GTEST_SKIP() << "no name is that long on 32 bits";
  }
  EXPECT_THROW(LegacyWriter{tree}, std::length_error);
}

TEST(MatricesText, WritesMatricesInNameOrderCountedFromZero) {
  ExpandedTree tree =
      treeOf({{"A", &kInputs, "T", {1, 1}}, {"B", &kOutput, "T", {2, 2}}}, {"", "Vox", ""});
  tree.matrices.clear();
  tree.matrices["D.b"] = {"N", {&tree.blocks[1], &tree.blocks[0]}};
  tree.matrices["D.a"] = {"", {}};
  tree.matrices["E.\""] = {"M\n", {&tree.blocks[1]}};
  EXPECT_EQ(
      textOf(tree, &LegacyWriter::writeMatrices),
      R"({"Config":{"version":8,"Matrices":[)"
      R"({"id":0,"name":"D.a","serialnumber":"","ports":[]},)"
      R"({"id":1,"name":"D.b","serialnumber":"N","ports":[)"
      R"({"port":"D.B.out.T.ch2","label":"D.B.out.T.ch2"},)"
      R"({"port":"D.A.P1.T.ch1","label":"D.A.P1.T.ch1"},{"port":"D.A.P2.T.ch1","label":"Vox"}]},)"
      R"({"id":2,"name":"E.\"","serialnumber":"M\n","ports":[)"
      R"({"port":"D.B.out.T.ch2","label":"D.B.out.T.ch2"}]}]}})");
}

TEST(MatricesText, EscapesEachPartOfAName) {
  EXPECT_EQ(portsOf(treeOf({{"\n", &kOther, "T", {1, 1}}})),
            R"({"port":"D.\n.x.T.ch1","label":"D.\n.x.T.ch1"})");
  EXPECT_EQ(portsOf(treeOf({{"A", &kOther, "\\", {1, 1}}})),
            R"({"port":"D.A.x.\\.ch1","label":"D.A.x.\\.ch1"})");
  EXPECT_EQ(portsOf(treeOf({{"A", &kQuoted, "T", {1, 1}}})),
            R"({"port":"D.A.\"[1].T.ch1","label":"D.A.\"[1].T.ch1"})");
  ExpandedTree tree = treeOf({{"A", &kOther, "T", {1, 1}}});
  tree.blocks[0].device.label = "\"";
  EXPECT_EQ(portsOf(tree), R"({"port":"\".A.x.T.ch1","label":"\".A.x.T.ch1"})");
}

TEST(MatricesText, EscapesWhatTheFormatterMakesOfAPlainPattern) {
  EXPECT_EQ(portsOf(treeOf({{"A", &kControl, "T", {1, 1}}})),
            R"({"port":"D.A.\u0007.T.ch1","label":"D.A.\u0007.T.ch1"})");
}

TEST(MatricesText, EscapesALabelOfAPlainName) {
  EXPECT_EQ(portsOf(treeOf({{"A", &kOther, "T", {1, 1}}}, {"a\\b\n"})),
            R"({"port":"D.A.x.T.ch1","label":"a\\b\n"})");
}

}  // namespace
}  // namespace quenfold::unpacking
