#include <fmt/format.h>
#include <gtest/gtest.h>

#include "app/stage_timer.h"
#include "matrices/legacy_reader.h"
#include "support/scratch.h"

namespace quenfold::packing {
namespace {

struct Reading {
  MatricesModel model;
  std::string errors;
};

Reading readingOf(std::string text, const std::string& name = "matrices.json") {
  Reading reading;
  reading.errors =
      test::standardErrorOf([&] { readMatrices(name, std::move(text), reading.model); });
  return reading;
}

Reading readingOfMatrices(std::string_view matrices) {
  return readingOf(fmt::format(R"({{"Config": {{"Matrices": [{}]}}}})", matrices));
}

/// One matrix F1 with serial S1 and these ports.
Reading readingOfPorts(std::string_view ports) {
  return readingOfMatrices(
      fmt::format(R"({{"name": "F1.a", "serialnumber": "S1", "id": 1, "ports": [{}]}})", ports));
}

std::string keyOf(const PortLabelEntry& entry) {
  return std::string(entry.serial) + std::string(entry.portFromDot);
}

std::string decoding(std::string_view message) {
  return fmt::format("Error decoding matrices.json: {}\n", message);
}

TEST(ReadMatrices, ReadsOnlyTheOneName) {
  const char* const text = R"({"Config": {"Matrices": [1]}})";
  for (const char* name :
       {"", "sources.json", "Matrices.json", "matrices.json ", "dir/matrices.json"}) {
    const Reading reading = readingOf(text, name);
    EXPECT_EQ(reading.errors, "") << name;
    EXPECT_TRUE(reading.model.details.empty());
  }
}

TEST(ReadMatrices, RefusesPortLabels) {
  MatricesModel model;
  EXPECT_EQ(test::messageOf([&] { readMatrices("portLabels.json", "{}", model); }),
            "portLabels not supported");
}

TEST(ReadMatrices, ReportsEachFaultOfTheFrame) {
  const std::string noRoot = decoding("matrices.json root object is not array.");
  EXPECT_EQ(readingOf("nonsense").errors, noRoot);
  EXPECT_EQ(readingOf("").errors, noRoot);
  EXPECT_EQ(readingOf("[]").errors, noRoot);
  EXPECT_EQ(readingOf(R"({"Config": {"Matrices": []}} x)").errors, noRoot);
  EXPECT_EQ(readingOf("{}").errors, decoding("matrices.json Config not found."));
  EXPECT_EQ(readingOf(R"({"Config": []})").errors, decoding("matrices.json Config is not object."));
  EXPECT_EQ(readingOf(R"({"Config": {}})").errors,
            decoding("matrices.json Config.Matrices not found."));
  EXPECT_EQ(readingOf(R"({"Config": {"Matrices": {}}})").errors,
            decoding("matrices.json Config.Matrices is not array."));
}

TEST(ReadMatrices, ReportsEachFaultOfAMatrix) {
  const auto message = [](std::string_view matrix) { return readingOfMatrices(matrix).errors; };
  EXPECT_EQ(message("1"), decoding("jsonGetString passed non-object"));
  EXPECT_EQ(message("{}"), decoding("name not found"));
  EXPECT_EQ(message(R"({"name": 1})"), decoding("name is not string"));
  EXPECT_EQ(message(R"({"name": "a"})"), decoding("serialnumber not found"));
  EXPECT_EQ(message(R"({"name": "a", "serialnumber": 1})"), decoding("serialnumber is not string"));
  EXPECT_EQ(message(R"({"name": "a", "serialnumber": "s"})"), decoding("id not found"));
  EXPECT_EQ(message(R"({"name": "a", "serialnumber": "s", "id": 1.5})"),
            decoding("id is not number"));
  EXPECT_EQ(message(R"({"name": "a", "serialnumber": "s", "id": 1})"),
            decoding("matrices.json matrix ports not found."));
  EXPECT_EQ(message(R"({"name": "a", "serialnumber": "s", "id": 1, "ports": {}})"),
            decoding("matrices.json matrix ports is not array."));
}

TEST(ReadMatrices, ReportsEachFaultOfAPort) {
  const auto message = [](std::string_view port) { return readingOfPorts(port).errors; };
  EXPECT_EQ(message("[]"), decoding("matrices.json matrix ports entry is not object."));
  EXPECT_EQ(message(R"({"label": "x"})"), decoding("port not found"));
  EXPECT_EQ(message(R"({"port": 1, "label": "x"})"), decoding("port is not string"));
  EXPECT_EQ(message(R"({"port": "F1.s.in[1].t.ch1"})"), decoding("label not found"));
  EXPECT_EQ(message(R"({"port": "F1.s.in[1].t.ch1", "label": null})"),
            decoding("label is not string"));
  EXPECT_EQ(message(R"({"port": "F1.s.in[1].t", "label": "F1.s.in[1].t"})"),
            decoding("Bad ch string"));
  EXPECT_EQ(message(R"({"port": "F1.s.in.t.ch1", "label": "F1.s.in.t.ch1"})"),
            decoding("PortString '[' not found"));
}

TEST(ReadMatrices, TakesTheMembersOfAMatrixInAnyOrder) {
  const char* const ports = R"("ports": [{"label": "Vox", "port": "F1.s.in[1].t.ch1"}])";
  const Reading reading = readingOfMatrices(
      fmt::format(R"({{{}, "type": 4, "id": 2, "serialnumber": "S1", "name": "F1.a"}})", ports));
  EXPECT_EQ(reading.errors, "");
  ASSERT_EQ(reading.model.details.size(), 1U);
  EXPECT_EQ(reading.model.details[0].type, 4);
  ASSERT_EQ(reading.model.portLabels.size(), 1U);
  EXPECT_EQ(keyOf(reading.model.portLabels[0]), "S1.s.in[1].t.ch1");
  EXPECT_EQ(readingOfMatrices(fmt::format("{{{}}}", ports)).errors, decoding("name not found"));
}

TEST(ReadMatrices, ReadsThePortsBeforeTheOneThatIsNoObject) {
  const Reading reading = readingOfPorts(R"({"port": "F1.s.in[1].t.ch1", "label": "Vox"}, 1,
                        {"port": "F1.s.in[2].t.ch1", "label": "Sax"})");
  EXPECT_EQ(reading.errors, decoding("matrices.json matrix ports entry is not object."));
  EXPECT_EQ(reading.model.portLabels.size(), 1U);
}

TEST(ReadMatrices, WarnsOfNothingInATextThatIsNotJson) {
  EXPECT_EQ(readingOf(R"({"Config": {"Matrices": [{"name": "F1", "serialnumber": "S", "id": 1,
      "ports": [{"port": "F2.s.in[1].t.ch1", "label": "Vox"}]}]}} x)")
                .errors,
            decoding("matrices.json root object is not array."));
}

TEST(ReadMatrices, WarnsOfABadlyFormedAliasBeforeTheSplitFails) {
  EXPECT_EQ(readingOfPorts(R"({"port": "abc", "label": "Vox"})").errors,
            "Port alias error - port string badly formed" + decoding("splitPort - no device."));
}

TEST(ReadMatrices, WarnsOfAnAliasWithoutDeviceLabelAndGoesOn) {
  const Reading reading = readingOfPorts(R"({"port": "F2.s.in[1].t.ch1", "label": "Vox"},
                        {"port": "F1.s.in[1].t.ch1", "label": "Sax"})");
  EXPECT_EQ(reading.errors, "Port alias error - port label not found.");
  ASSERT_EQ(reading.model.portLabels.size(), 1U);
  EXPECT_EQ(keyOf(reading.model.portLabels[0]), "S1.s.in[1].t.ch1");
  EXPECT_EQ(reading.model.portLabels[0].label, "Sax");
  EXPECT_EQ(reading.model.devices.size(), 2U);
}

TEST(ReadMatrices, TakesNoAliasFromALabelThatBeginsWithThePort) {
  const Reading reading =
      readingOfPorts(R"({"port": "F1.1.in[1].t.ch1", "label": "F1.1.in[1].t.ch1x"},
                        {"port": "F1.1.in[2].t.ch1", "label": "F1.1.in[2].t.ch1"},
                        {"port": "F1.1.in[3].t.ch1", "label": "F1.1.in[3].t.ch"},
                        {"port": "F1.1.in[4].t.ch1", "label": ""})");
  EXPECT_EQ(reading.errors, "");
  ASSERT_EQ(reading.model.portLabels.size(), 2U);
  EXPECT_EQ(keyOf(reading.model.portLabels[0]), "S1.1.in[3].t.ch1");
  EXPECT_EQ(reading.model.portLabels[0].label, "F1.1.in[3].t.ch");
  EXPECT_EQ(reading.model.portLabels[1].label, "");
}

TEST(ReadMatrices, KeepsRepeatedPortLabels) {
  const Reading reading = readingOfPorts(R"({"port": "F1.1.in[1].t.ch1", "label": "A"},
                                            {"port": "F1.1.in[1].t.ch2", "label": "B"},
                                            {"port": "F1.1.in[1].t.ch2", "label": "C"})");
  ASSERT_EQ(reading.model.portLabels.size(), 3U);
  EXPECT_EQ(keyOf(reading.model.portLabels[1]), keyOf(reading.model.portLabels[2]));
  EXPECT_EQ(reading.model.portLabels[2].label, "C");
}

TEST(ReadMatrices, KeepsTheFirstSerialOfALabel) {
  const Reading reading = readingOfMatrices(
      R"({"name": "F1.audio", "serialnumber": "S1", "id": 4, "ports": []},
         {"name": "F1.video", "serialnumber": "S2", "id": 5, "type": 9, "ports": []},
         {"name": "F2", "serialnumber": "", "id": 6, "ports": []},
         {"name": ".x", "serialnumber": "S3", "id": 7, "ports": []},
         {"name": "", "serialnumber": "S4", "id": 8, "type": "9", "ports": []})");
  EXPECT_EQ(reading.errors, "");
  ASSERT_EQ(reading.model.deviceLabels.size(), 1U);
  EXPECT_EQ(reading.model.deviceLabels[0].label, "F1");
  EXPECT_EQ(reading.model.deviceLabels[0].serial, "S1");
  ASSERT_EQ(reading.model.details.size(), 5U);
  EXPECT_EQ(reading.model.details[0].name, "F1.audio");
  EXPECT_EQ(reading.model.details[0].id, 4);
  EXPECT_EQ(reading.model.details[0].type, 0);
  EXPECT_EQ(reading.model.details[1].type, 9);
  EXPECT_EQ(reading.model.details[4].name, "");
  EXPECT_EQ(reading.model.details[4].type, 0);
}

TEST(ReadMatrices, CutsAndLimitsTheType) {
  const Reading reading = readingOfMatrices(
      R"({"name": "a", "serialnumber": "s", "id": 1, "type": -2.9, "ports": []},
         {"name": "a", "serialnumber": "s", "id": 1, "type": 1e12, "ports": []})");
  ASSERT_EQ(reading.model.details.size(), 2U);
  EXPECT_EQ(reading.model.details[0].type, -2);
  EXPECT_EQ(reading.model.details[1].type, 2147483647);
}

TEST(ReadMatrices, KeepsWhatWasReadBeforeAnError) {
  const Reading reading = readingOfMatrices(
      R"({"name": "F1.a", "serialnumber": "S1", "id": 1, "ports": [
            {"port": "F1.s.in[1].t.ch1", "label": "Vox"},
            {"port": "F1.s.in[2].t.c1", "label": "Sax"},
            {"port": "F1.s.in[3].t.ch1", "label": "Never"}]},
         {"name": "F2.a", "serialnumber": "S2", "id": 2, "ports": []})");
  EXPECT_EQ(reading.errors, decoding("Bad ch string"));
  EXPECT_EQ(reading.model.deviceLabels.size(), 1U);
  EXPECT_EQ(reading.model.details.size(), 1U);
  ASSERT_EQ(reading.model.portLabels.size(), 2U);
  EXPECT_EQ(reading.model.portLabels[1].label, "Sax");
  ASSERT_EQ(reading.model.devices.size(), 1U);
  EXPECT_EQ(reading.model.devices[0].slots[0].ports.size(), 1U);
}

TEST(ReadMatrices, KeepsTheDeviceLabelOfAMatrixWithoutId) {
  const Reading reading =
      readingOfMatrices(R"({"name": "F1.a", "serialnumber": "S1", "ports": []})");
  EXPECT_EQ(reading.errors, decoding("id not found"));
  EXPECT_EQ(reading.model.deviceLabels.size(), 1U);
  EXPECT_TRUE(reading.model.details.empty());
}

TEST(ReadMatrices, SurvivesDeepNesting) {
  EXPECT_EQ(readingOf(std::string(200000, '[')).errors,
            decoding("matrices.json root object is not array."));
}

TEST(ReadMatrices, ReportsItsStage) {
  verbose = true;
  const Reading reading = readingOf("{}");
  verbose = false;
  EXPECT_EQ(reading.errors.substr(0, 24), "decoding matrices.json: ");
}

}  // namespace
}  // namespace quenfold::packing
