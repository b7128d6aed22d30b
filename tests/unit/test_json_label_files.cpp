#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <map>
#include <utility>

#include "app/limits.h"
#include "app/stage_timer.h"
#include "json/label_files.h"
#include "support/colliding_keys.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

std::vector<DeviceLabel> devicesOf(std::string_view json) {
  const test::ScratchFolder scratch;
  return parseDeviceLabels(scratch.file("devices.json", json));
}

using Entries = std::map<std::string, std::string>;

Entries portsOf(std::string_view json, bool reverse = false, const DeviceMapper& mapper = nullptr) {
  const test::ScratchFolder scratch;
  const PortLabelMap labels = loadPortLabels(scratch.file("ports.json", json), reverse, mapper);
  Entries entries;
  for (const auto& [key, label] : labels.entries()) {
    EXPECT_TRUE(entries.emplace(key, label).second) << key;
  }
  return entries;
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

TEST(IndexById, GivesTheFirstDeviceOfAnId) {
  const std::vector<DeviceLabel> devices = {{"B", "Box", "S1"}, {"A", "", "S2"}, {"B", "C", "S3"}};
  const DeviceIndex index = indexById(devices);
  ASSERT_EQ(index.size(), 2U);
  EXPECT_EQ(index.at("A"), &devices[1]);
  EXPECT_EQ(index.at("B"), &devices[0]);
}

TEST(IndexById, SpreadsIdsMadeToCollide) {
  std::vector<DeviceLabel> devices;
  for (const std::string& id : test::WordsOfOneHash::make(500)) {
    devices.push_back({id, "", ""});
  }
  const DeviceIndex index = indexById(devices);
  ASSERT_EQ(index.size(), devices.size());
  for (std::size_t bucket = 0; bucket < index.bucket_count(); ++bucket) {
    EXPECT_LE(index.bucket_size(bucket), 16U);
  }
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
  EXPECT_EQ(portsOf(json), (Entries{{"dev1.in.3", "Vox"}}));
  EXPECT_EQ(portsOf(json, true), (Entries{{"Vox", "dev1.in.3"}}));
}

TEST(LoadPortLabels, LastOccurrenceWins) {
  const char* const json = R"({"portLabels": {"a.1": "Vox", "b.1": "Vox", "a.1": "Sax"}})";
  EXPECT_EQ(portsOf(json), (Entries{{"a.1", "Sax"}, {"b.1", "Vox"}}));
  EXPECT_EQ(portsOf(json, true), (Entries{{"Vox", "b.1"}, {"Sax", "a.1"}}));
}

TEST(LoadPortLabels, TakesKeysAndLabelsUpToAZeroByte) {
  const char* const json =
      R"({"portLabels": {"a.1": "q\u0000r", "b.2\u0000x": "Vox", "c.3": "\u0000r", "\u0000": "N"}})";
  EXPECT_EQ(portsOf(json), (Entries{{"a.1", "q"}, {"b.2", "Vox"}, {"c.3", ""}, {"", "N"}}));
  EXPECT_EQ(portsOf(json, true), (Entries{{"q", "a.1"}, {"Vox", "b.2"}, {"", "c.3"}, {"N", ""}}));
}

TEST(LoadPortLabels, TakesKeysThatAreEqualUpToAZeroByteForOne) {
  EXPECT_EQ(portsOf(R"({"portLabels": {"a.1\u0000x": "Vox", "a.1\u0000y": "Sax"}})"),
            (Entries{{"a.1", "Sax"}}));
  EXPECT_EQ(portsOf(R"({"portLabels": {"a.1": "Vox\u0000x", "b.1": "Vox\u0000y"}})", true),
            (Entries{{"Vox", "b.1"}}));
}

TEST(LoadPortLabels, AsksTheMapperForNothingBehindAZeroByte) {
  const auto labels = portsOf(R"({"portLabels": {"dev1.in\u0000.x": "V", "dev\u0000.in": "W"}})",
                              false, [](std::string_view) { return "7"; });
  EXPECT_EQ(labels, (Entries{{"7.in", "V"}, {"dev", "W"}}));
}

TEST(LoadPortLabels, AsksTheMapperForTheDevicePart) {
  const char* const json = R"({"portLabels": {"dev1.in.3": "Vox", "plain": "P", "x.y": "X"}})";
  std::vector<std::string> asked;
  const auto labels = portsOf(json, false, [&](std::string_view device) {
    asked.emplace_back(device);
    return device == "dev1" ? "7" : "";
  });
  EXPECT_EQ(labels, (Entries{{"7.in.3", "Vox"}, {"plain", "P"}, {"x.y", "X"}}));
  EXPECT_EQ(asked, (std::vector<std::string>{"dev1", "x"}));
}

TEST(PortLabelMap, FindsByAView) {
  PortLabelMap labels;
  EXPECT_TRUE(labels.empty());
  labels.assign("key", "first");
  labels.assign("key", "second");
  EXPECT_FALSE(labels.empty());
  EXPECT_EQ(labels.size(), 1U);
  ASSERT_NE(labels.find(std::string_view("keys", 3)), nullptr);
  EXPECT_EQ(*labels.find("key"), "second");
  EXPECT_EQ(labels.find("keys"), nullptr);
}

TEST(PortLabelMap, KeepsItsTextsWhereverItIsMoved) {
  PortLabelMap labels;
  labels.assign(labels.keepJoined("dev", ".in.3"), labels.keep("Vox"));
  PortLabelMap moved = std::move(labels);
  EXPECT_EQ(*moved.find("dev.in.3"), "Vox");
  PortLabelMap assigned;
  assigned.assign("other", "");
  assigned = std::move(moved);
  EXPECT_EQ(*assigned.find("dev.in.3"), "Vox");
  EXPECT_EQ(assigned.find("other"), nullptr);
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

TEST(LoadPortLabels, TheFirstSectionOfTheRootCounts) {
  EXPECT_EQ(portsOf(R"({"more": {"b": "2"}, "portLabels": {"a": "1"}, "portLabels": {"c": "3"}})"),
            (Entries{{"a", "1"}}));
  EXPECT_EQ(portsOf(R"({"portLabels": {"a": "1"}, "more": {"b": "2"}, "last": "4"})"),
            (Entries{{"a", "1"}}));
  EXPECT_EQ(portMessage(R"({"portLabels": [{"a": "1"}], "portLabels": {}})"),
            "portLabels is not object");
  EXPECT_EQ(portMessage(R"({"portLabels": "text"})"), "portLabels is not object");
  EXPECT_EQ(portMessage(R"({"more": {"portLabels": {}}})"), "portLabels not found");
  EXPECT_EQ(portMessage(R"([{"portLabels": {}}])"), "loadPortLabels root is not object");
}

TEST(LoadPortLabels, KeepsTheOrderAndFindsEachOfMany) {
  std::string json = R"({"portLabels": {"p.0": "again")";
  for (int i = 1; i < 1000; ++i) {
    json += ", \"p." + std::to_string(i) + "\": \"L" + std::to_string(i) + "\"";
  }
  const test::ScratchFolder scratch;
  const std::string path = scratch.file("ports.json", json + R"(, "p.0": "L0"}})");
  const PortLabelMap labels = loadPortLabels(path, false, nullptr);
  ASSERT_EQ(labels.size(), 1000U);
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ(labels.entries()[static_cast<std::size_t>(i)].key, "p." + std::to_string(i));
    EXPECT_EQ(*labels.find("p." + std::to_string(i)), "L" + std::to_string(i));
  }
}

/// As many bytes as the limit and one more; nobody may look at them.
class TooManyBytes {
 public:
  TooManyBytes() : bytes_(mmap(nullptr, kSize, PROT_NONE, kFlags, -1, 0)) {}
  ~TooManyBytes() { munmap(bytes_, kSize); }
  TooManyBytes(const TooManyBytes&) = delete;
  TooManyBytes& operator=(const TooManyBytes&) = delete;

  [[nodiscard]] std::string_view view() const { return {static_cast<const char*>(bytes_), kSize}; }

 private:
  static constexpr std::size_t kSize = kMaxReplacedBytes + 1;
  static constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;

  void* bytes_;
};

TEST(LoadPortLabels, MeetsItsLimitInTheOrderOfAFileThatIsJson) {
  const TooManyBytes device;
  const auto message = [&](std::string_view entries, std::string_view end) {
    return test::messageOf([&] {
      portsOf(fmt::format(R"({{"portLabels": {{{}}}}}{})", entries, end), false,
              [&](std::string_view) { return device.view(); });
    });
  };
  const std::string limit =
      fmt::format("too many bytes of port label keys: more than {}", kMaxReplacedBytes);
  EXPECT_EQ(message(R"("a.1": "Vox")", ""), limit);
  EXPECT_EQ(message(R"("a.1": "Vox")", " x"), "loadPortLabels root is not object");
  EXPECT_EQ(message(R"("a.1": "Vox", "b.1": 5)", ""), limit);
  EXPECT_EQ(message(R"("b.1": 5, "a.1": "Vox")", ""), "portLabel entry value is not string");
}

TEST(LoadPortLabels, ReportsNoStringOnlyWhereTheFileIsJson) {
  EXPECT_EQ(portMessage(R"({"portLabels": {"a": 1, "b": "2"}})"),
            "portLabel entry value is not string");
  EXPECT_EQ(portMessage(R"({"portLabels": {"a": 1, "b": "2"}, })"),
            "loadPortLabels root is not object");
}

TEST(LoadPortLabels, EveryEntryIsAString) {
  for (const char* const value : {"null", "true", "1.5", "[]", R"(["x"])", "{}", R"({"a": "1"})"}) {
    const std::string file = R"({"portLabels": {"first": "", "k": )" + std::string(value) + "}";
    EXPECT_EQ(portMessage(file + "}"), "portLabel entry value is not string") << value;
    EXPECT_EQ(portMessage(file), "loadPortLabels root is not object") << value;
  }
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

TEST(LabelOfDevice, TakesTheFirstDeviceOfAnId) {
  const std::vector<DeviceLabel> list = {
      {"SN1", "Stage", "S"}, {"SN1", "Other", "S"}, {"SN2", "", "S"}, {"SN3", "SN3", "S"}};
  const DeviceMapper label = labelOfDevice(list);
  EXPECT_EQ(label("SN1"), "Stage");
  EXPECT_EQ(label("SN2"), "");
  EXPECT_EQ(label("SN3"), "SN3");
  EXPECT_EQ(label("Stage"), "Stage");
  EXPECT_EQ(label("sn1"), "sn1");
}

TEST(LabelOfDevice, KnowsTheEmptyIdAndNoDevices) {
  const std::vector<DeviceLabel> list = {{"A", "Box", ""}, {"B", "Rack", ""}, {"", "Nameless", ""}};
  const DeviceMapper label = labelOfDevice(list);
  EXPECT_EQ(label(""), "Nameless");
  EXPECT_EQ(label("B"), "Rack");
  EXPECT_EQ(labelOfDevice({})(""), "");
}

}  // namespace
}  // namespace quenfold
