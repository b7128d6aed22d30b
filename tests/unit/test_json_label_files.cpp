#include <gtest/gtest.h>

#include "app/stage_timer.h"
#include "json/label_files.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

std::vector<DeviceLabel> devicesOf(std::string_view json) {
  const test::ScratchFolder scratch;
  return parseDeviceLabels(scratch.file("devices.json", json));
}

PortLabelMap portsOf(std::string_view json, bool reverse = false,
                     const DeviceMapper& mapper = nullptr) {
  const test::ScratchFolder scratch;
  return loadPortLabels(scratch.file("ports.json", json), reverse, mapper);
}

std::string deviceMessage(std::string_view json) {
  return test::messageOf([&] { devicesOf(json); });
}

std::string portMessage(std::string_view json) {
  return test::messageOf([&] { portsOf(json); });
}

TEST(ParseDeviceLabels, KeepsFileOrderAndDuplicates) {
  const auto labels = devicesOf(R"({"deviceLabels": [
    {"id": "B", "label": "Box", "serial": "S1"},
    {"serial": "S2", "more": 1, "label": "", "id": "A"},
    {"id": "B", "label": "Other", "serial": "S3"}]})");
  ASSERT_EQ(labels.size(), 3U);
  EXPECT_EQ(labels[0].id, "B");
  EXPECT_EQ(labels[0].label, "Box");
  EXPECT_EQ(labels[0].serial, "S1");
  EXPECT_EQ(labels[1].id, "A");
  EXPECT_EQ(labels[1].label, "");
  EXPECT_EQ(labels[1].serial, "S2");
  EXPECT_EQ(labels[2].label, "Other");
}

TEST(ParseDeviceLabels, AcceptsAnEmptyList) {
  EXPECT_TRUE(devicesOf(R"({"deviceLabels": []})").empty());
}

TEST(ParseDeviceLabels, ReportsEachFault) {
  EXPECT_EQ(deviceMessage("nonsense"), "parseDeviceLabels root is not object");
  EXPECT_EQ(deviceMessage("[]"), "parseDeviceLabels root is not object");
  EXPECT_EQ(deviceMessage("{}"), "deviceLabels not found");
  EXPECT_EQ(deviceMessage(R"({"deviceLabels": {}})"), "deviceLabels is not array");
  EXPECT_EQ(deviceMessage(R"({"deviceLabels": [1]})"), "jsonGetString passed non-object");
  EXPECT_EQ(deviceMessage(R"({"deviceLabels": [{"label": 1}]})"), "id not found");
  EXPECT_EQ(deviceMessage(R"({"deviceLabels": [{"id": 1}]})"), "id is not string");
  EXPECT_EQ(deviceMessage(R"({"deviceLabels": [{"id": "A", "label": 1}]})"), "label is not string");
  EXPECT_EQ(deviceMessage(R"({"deviceLabels": [{"id": "A1", "label": "Stage box"}]})"),
            "serial not found");
}

TEST(ParseDeviceLabels, PassesAReadFailureOn) {
  EXPECT_EQ(test::messageOf([] { parseDeviceLabels("no-such-folder/x"); }),
            "error while opening file: no-such-folder/x");
}

TEST(LoadPortLabels, MapsKeyToLabelOrBack) {
  const char* const json = R"({"portLabels": {"dev1.in.3": "Vox"}})";
  EXPECT_EQ(portsOf(json), (PortLabelMap{{"dev1.in.3", "Vox"}}));
  EXPECT_EQ(portsOf(json, true), (PortLabelMap{{"Vox", "dev1.in.3"}}));
}

TEST(LoadPortLabels, LastOccurrenceWins) {
  const char* const json = R"({"portLabels": {"a.1": "Vox", "b.1": "Vox", "a.1": "Sax"}})";
  EXPECT_EQ(portsOf(json), (PortLabelMap{{"a.1", "Sax"}, {"b.1", "Vox"}}));
  EXPECT_EQ(portsOf(json, true), (PortLabelMap{{"Vox", "b.1"}, {"Sax", "a.1"}}));
}

TEST(LoadPortLabels, AsksTheMapperForTheDevicePart) {
  const char* const json = R"({"portLabels": {"dev1.in.3": "Vox", "plain": "P", "x.y": "X"}})";
  std::vector<std::string> asked;
  const auto labels = portsOf(json, false, [&](std::string_view device) {
    asked.emplace_back(device);
    return device == "dev1" ? std::string("7") : std::string();
  });
  EXPECT_EQ(labels, (PortLabelMap{{"7.in.3", "Vox"}, {"plain", "P"}, {"x.y", "X"}}));
  EXPECT_EQ(asked, (std::vector<std::string>{"dev1", "x"}));
}

TEST(LoadPortLabels, ReportsEachFault) {
  EXPECT_EQ(portMessage("nonsense"), "loadPortLabels root is not object");
  EXPECT_EQ(portMessage("[]"), "loadPortLabels root is not object");
  EXPECT_EQ(portMessage("{}"), "portLabels not found");
  EXPECT_EQ(portMessage(R"({"portLabels": []})"), "portLabels is not object");
  EXPECT_EQ(portMessage(R"({"portLabels": {"k": 5}})"), "portLabel entry value is not string");
  EXPECT_EQ(test::messageOf([] { loadPortLabels("no-such-folder/x", false, nullptr); }),
            "error while opening file: no-such-folder/x");
}

TEST(LabelFiles, SurviveDeepNesting) {
  const std::string open(200000, '[');
  EXPECT_EQ(deviceMessage(open), "parseDeviceLabels root is not object");
  EXPECT_EQ(portMessage(open), "loadPortLabels root is not object");
}

TEST(LabelFiles, ReportTheirStages) {
  verbose = true;
  const std::string devices = test::standardErrorOf([] { devicesOf(R"({"deviceLabels": []})"); });
  const std::string ports = test::standardErrorOf([] { portsOf(R"({"portLabels": {}})"); });
  verbose = false;
  EXPECT_EQ(devices.substr(0, 26), "    Loaded device labels: ");
  EXPECT_EQ(ports.substr(0, 24), "    Loaded port labels: ");
}

}  // namespace
}  // namespace quenfold
