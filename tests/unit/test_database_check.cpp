#include <fmt/core.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "database/check.h"
#include "support/scratch.h"

namespace quenfold::database {
namespace {

using Told = std::vector<std::string>;

/// Ports of one matrix "A.t" of a device "A" with the serial number "S".
std::string matricesOf(const std::string& ports) {
  return R"({"Config":{"version":8,"Matrices":[{"id":0,"name":"A.t","serialnumber":"S","ports":[)" +
         ports + "]}]}}";
}

std::string portOf(const std::string& name, const std::string& label) {
  return R"({"port":")" + name + R"(","label":")" + label + R"("})";
}

/// One source with the id 1, the name "Cam" and a single port.
std::string sourcesWith(const std::string& port) {
  return R"({"LogicalSources":{"version":10,"LogicalSource":[{"id":1,"name":"Cam","val":[")" +
         port + R"("]}]}})";
}

Told linesOf(const Findings& findings) {
  Told lines;
  for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
    for (const auto& [file, group] : findings.of(static_cast<Kind>(kind))) {
      for (const std::string& place : group.places) {
        lines.push_back(fmt::format("{} {}: {}", kKinds.at(kind).name, file, place));
      }
    }
  }
  return lines;
}

/// Of the set that the database is packed to.
Told toldOfPacked(const std::string& matrices, const std::string& sources) {
  const test::ScratchFolder folder;
  static_cast<void>(folder.file("matrices.json", matrices));
  static_cast<void>(folder.file("sources.json", sources));
  const FileTexts texts = packInMemory(readLegacyDatabase(folder.path())).texts;
  return linesOf(checkPacked(texts, loadPackedDatabase(texts, {}), true));
}

/// Every finding as "<kind> <file>: <place>".
Told told(const std::string& matrices, const std::string& sources) {
  const test::ScratchFolder folder;
  static_cast<void>(folder.file("matrices.json", matrices));
  static_cast<void>(folder.file("sources.json", sources));
  const LegacyDatabase legacy = readLegacyDatabase(folder.path());
  return linesOf(checkLegacy(legacy, packInMemory(legacy), true));
}

TEST(CheckLegacy, FindsNothingInWhatComesBack) {
  EXPECT_EQ(told(matricesOf(portOf("A.s.in[1].t.ch1", "Stage")), sourcesWith("Stage")), Told{});
}

/// Ports of the matrices with the members that a matrix has beside them.
std::string matricesWith(const std::string& matrices) {
  return R"({"Config":{"version":8,"Matrices":[)" + matrices + "]}}";
}

/// One source with the id 1, these members and the port "Stage".
std::string sourceWith(const std::string& members) {
  return R"({"LogicalSources":{"LogicalSource":[{"id":1,"val":["Stage"],)" + members + "}]}}";
}

const std::string kStage = portOf("A.s.in[1].t.ch1", "Stage");

// The device has the serial number of its first matrix; the second one holds no port that could
// tell.
TEST(CheckLegacy, TellsAnEmptyMatrixThatComesBackWithAnotherSerialNumber) {
  EXPECT_EQ(told(matricesWith(R"({"id":1,"name":"A.x","serialnumber":"S9","ports":[)" +
                              portOf("A.s.in[1].x.ch1", "") +
                              R"(]},{"id":0,"name":"A.t","serialnumber":"S1","ports":[]},)"
                              R"({"id":0,"name":"A.t","serialnumber":"S9","ports":[)" +
                              kStage + "]}"),
                 sourcesWith("Stage")),
            (Told{"matrix-changed matrices.json: A.t (S1) -> A.t (S9)",
                  "matrix-changed matrices.json: A.t -> nothing",
                  "order-changed matrices.json: Config.Matrices"}));
}

TEST(CheckLegacy, TellsWhatElseAPortHoldsWhereItsNameIsMissing) {
  EXPECT_EQ(told(matricesOf(kStage + R"(,{"label":"a","other":1})"), sourcesWith("Stage")),
            (Told{"reading-stops matrices.json: Config.Matrices[0].ports[1]: port not found",
                  "member-ignored matrices.json: Config.Matrices[1].ports[2].other"}));
}

TEST(CheckLegacy, TellsAVersionThatIsNoNumber) {
  EXPECT_EQ(told(R"({"Config":{"version":"8","Matrices":[{"id":0,"name":"A.t","serialnumber":"S",)"
                 R"("ports":[)" +
                     kStage + "]}]}}",
                 R"({"LogicalSources":{"version":"10","another":1,"LogicalSource":[]}})"),
            (Told{"member-ignored matrices.json: Config.version",
                  "member-ignored sources.json: sources.json LogicalSources.version",
                  "member-ignored sources.json: sources.json LogicalSources.another"}));
}

TEST(CheckLegacy, TellsASecondListOfRecords) {
  EXPECT_EQ(told(matricesOf(kStage), R"({"LogicalSources":{"LogicalSource":[],"logicalsource":[)"
                                     R"({"id":1,"name":"Cam","val":["Stage"]}]}})"),
            Told{"field-lost sources.json: sources.json LogicalSources.logicalsource"});
}

TEST(CheckLegacy, TellsASecondTableInTheFile) {
  EXPECT_EQ(told(matricesOf(kStage), R"({"LogicalSources":{"LogicalSource":[]},)"
                                     R"("LogicalSources":{"LogicalSource":[]}})"),
            Told{"field-lost sources.json: sources.json LogicalSources"});
}

// Packing cuts the number's zeros, so the port of the label is none of those that bear it.
TEST(CheckLegacy, NamesAllBearersOfALabelWhereThePackedPortIsSpelledOtherwise) {
  EXPECT_EQ(told(matricesOf(portOf("A.s.in[2].t.ch1", "Stage") + "," +
                            portOf("A.s.in[01].t.ch1", "Stage")),
                 sourcesWith("Stage")),
            (Told{"port-added matrices.json: A.s.in[1].t.ch1",
                  "port-lost matrices.json: A.s.in[01].t.ch1",
                  "port-ambiguous sources.json: sources.json 1 \"Cam\" port 1: \"Stage\" -> "
                  "A.s.in[1].t.ch1, also A.s.in[01].t.ch1, A.s.in[2].t.ch1",
                  "port-dangling sources.json: sources.json 1 \"Cam\" port 1: \"Stage\""}));
}

TEST(CheckLegacy, TellsAnEmptyCategoryBeyondTheSixthThatIsNoText) {
  EXPECT_EQ(
      told(matricesOf(kStage), sourceWith(R"("name":"Cam","category":["a","","","","","",null])")),
      Told{"category-lost sources.json: sources.json 1 \"Cam\" category"});
  EXPECT_EQ(
      told(matricesOf(kStage), sourceWith(R"("name":"Cam","category":["a","","","","","",""])")),
      Told{});
}

// The second port's label is that of its last entry, which the label "Stage" is no longer.
TEST(CheckLegacy, TellsALabelOfSeveralPortsOfWhichOneLosesIt) {
  EXPECT_EQ(told(matricesOf(portOf("A.s.in[1].t.ch1", "Stage") + "," +
                            portOf("A.s.in[2].t.ch1", "Stage") + "," +
                            portOf("A.s.in[2].t.ch1", "Choir")),
                 sourcesWith("Stage")),
            (Told{"port-repeated matrices.json: A.s.in[2].t.ch1",
                  "label-lost matrices.json: A.s.in[2].t.ch1: \"Stage\" -> \"Choir\"",
                  "port-ambiguous sources.json: sources.json 1 \"Cam\" port 1: \"Stage\" -> "
                  "A.s.in[2].t.ch1, also A.s.in[1].t.ch1"}));
}

TEST(CheckLegacy, TellsALabelWhosePortComesBackSpelledOtherwise) {
  EXPECT_EQ(told(matricesOf(portOf("A.s.in[01].t.ch1", "Stage")), sourcesWith("Stage")),
            (Told{"port-added matrices.json: A.s.in[1].t.ch1",
                  "port-lost matrices.json: A.s.in[01].t.ch1",
                  "port-changed sources.json: sources.json 1 \"Cam\" port 1: \"Stage\" -> "
                  "A.s.in[1].t.ch1",
                  "port-dangling sources.json: sources.json 1 \"Cam\" port 1: \"Stage\""}));
}

TEST(CheckLegacy, TellsAPortKeyThatComesBackSpelledOtherwise) {
  const std::string matrices = matricesOf(portOf("A.s.in[1].t.ch1", "Stage"));
  EXPECT_EQ(told(matrices, sourcesWith("A.s.in[1].t.ch1")), Told{});
  EXPECT_EQ(
      told(matrices, sourcesWith("A.s.in[01].t.ch1x")),
      Told{"port-changed sources.json: sources.json 1 \"Cam\" port 1: \"A.s.in[01].t.ch1x\" -> "
           "A.s.in[1].t.ch1"});
  EXPECT_EQ(told(matrices, sourcesWith("A.s.in[99999999999].t.ch1")),
            (Told{"port-changed sources.json: sources.json 1 \"Cam\" port 1: "
                  "\"A.s.in[99999999999].t.ch1\" -> A.s.in[2147483647].t.ch1",
                  "port-dangling sources.json: sources.json 1 \"Cam\" port 1: "
                  "\"A.s.in[99999999999].t.ch1\""}));
}

TEST(CheckLegacy, TellsAPortThatComesBackEmptyAsItsLabelIs) {
  EXPECT_EQ(told(matricesOf(portOf("A.s.in[1].t.ch1", "")), sourcesWith("A.s.in[1].t.ch1")),
            Told{"port-changed sources.json: sources.json 1 \"Cam\" port 1: \"A.s.in[1].t.ch1\" -> "
                 "nothing"});
}

TEST(CheckPacked, KeepsFingerprintsOfNamesThatDifferInLetterCaseApart) {
  EXPECT_EQ(toldOfPacked(matricesOf(portOf("A.s.in[1].t.ch1", "Stage")),
                         R"({"LogicalSources":{"LogicalSource":[)"
                         R"({"id":1,"Id":2,"name":"Cam","Redirect":8,"redirect":7,"val":[]}]}})"),
            Told{});
}

}  // namespace
}  // namespace quenfold::database
