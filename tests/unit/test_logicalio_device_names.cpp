#include <gtest/gtest.h>

#include "logicalio/device_names.h"
#include "support/written_json.h"

namespace quenfold {
namespace {

const std::vector<DeviceLabel>& devices() {
  static const std::vector<DeviceLabel> list = {
      {"SN1", "Stage", "S"}, {"SN1", "Other", "S"}, {"SN2", "", "S"}, {"SN3", "SN3", "S"}};
  return list;
}

PortDict dictOf(std::initializer_list<const char*> names) {
  PortDict dict;
  for (const char* name : names) {
    dict.device.add(name);
  }
  return dict;
}

std::string namesOf(const PortDict& dict) { return test::jsonOf(dict.device); }

TEST(LabelOfDevice, TakesTheFirstDeviceOfAnId) {
  const DeviceMapper label = labelOfDevice(devices());
  EXPECT_EQ(label("SN1"), "Stage");
  EXPECT_EQ(label("SN2"), "");
  EXPECT_EQ(label("SN3"), "SN3");
  EXPECT_EQ(label("Stage"), "Stage");
  EXPECT_EQ(label("sn1"), "sn1");
}

TEST(LabelOfDevice, AnswersTheSameHoweverOftenAndInAnyOrder) {
  const std::vector<DeviceLabel> list = {{"A", "Box", ""}, {"B", "Rack", ""}, {"", "Nameless", ""}};
  const DeviceMapper label = labelOfDevice(list);
  EXPECT_EQ(label(""), "Nameless");
  EXPECT_EQ(label("A"), "Box");
  EXPECT_EQ(label("A"), "Box");
  EXPECT_EQ(label("unknown"), "unknown");
  EXPECT_EQ(label("B"), "Rack");
  EXPECT_EQ(label("A"), "Box");
  EXPECT_EQ(labelOfDevice({})(""), "");
}

TEST(NameDevices, ById) {
  PortDict dict = dictOf({"Stage", "SN3", "unknown"});
  nameDevicesById(devices(), dict);
  EXPECT_EQ(namesOf(dict), R"([[0, "SN1"], [1, "SN3"], [2, "unknown"]])");
}

TEST(NameDevices, ByLabel) {
  PortDict dict = dictOf({"SN1", "SN3", "SN2"});
  nameDevicesByLabel(devices(), dict);
  EXPECT_EQ(namesOf(dict), R"([[0, "Stage"], [1, "SN3"], [2, ""]])");
}

TEST(NameDevices, ATakenNameStops) {
  PortDict dict = dictOf({"Stage", "SN1"});
  nameDevicesById(devices(), dict);
  EXPECT_EQ(namesOf(dict), R"([[0, "Stage"], [1, "SN1"]])");
}

TEST(NameDevices, OneAfterTheOtherInListOrder) {
  PortDict dict = dictOf({"a", "b"});
  nameDevicesById({{"c", "a", ""}, {"a", "b", ""}, {"b", "c", ""}}, dict);
  EXPECT_EQ(namesOf(dict), R"([[0, "b"], [1, "a"]])");
}

}  // namespace
}  // namespace quenfold
