#include <gtest/gtest.h>

#include <initializer_list>

#include "json/cjson_tree.h"
#include "logicalio/port_dict.h"
#include "support/written_json.h"

namespace quenfold {
namespace {

using Widths = std::array<std::int32_t, kPortFieldCount>;
using Positions = std::array<std::uint32_t, kPortFieldCount>;

PortDict dictOf(std::initializer_list<const char*> portKeys) {
  PortDict dict;
  std::string ignored;
  for (const char* key : portKeys) {
    dict.registerPortKey(key, ignored);
  }
  dict.computeWidths();
  return dict;
}

/// The number that a key packs to in a dictionary that holds it already.
std::uint64_t packed(PortDict& dict, const char* portKey) {
  std::string idKey;
  return dict.packIdKey(dict.registerPortKey(portKey, idKey));
}

PortDict loaded(const std::string& json) {
  PortDict dict;
  const std::error_code failure = dict.fromJson(*parseCJson(json));
  EXPECT_FALSE(failure) << failure.message();
  return dict;
}

/// A dictionary with one name a map, the slots unlisted, and that bit-packing string.
PortDict withBitPacking(const std::string& bitPacking) {
  return loaded(R"({"version": 2, "refMaps": {"device": [[0, "d"]], "port_prefix": [[0, "in"]],
                 "type": [[0, "t"]]}, "bitPacking": ")" +
                bitPacking + "\"}");
}

TEST(PortDict, StartsEmpty) {
  const PortDict dict;
  EXPECT_EQ(dict.version, 2U);
  EXPECT_EQ(dict.bits, Widths{});
  EXPECT_EQ(dict.packIdKey("1.1.1[1].1.1"), 0U);
  EXPECT_EQ(dict.unpackToPortKey(4294967295U), "..[0]..ch0");
}

TEST(RegisterPortKey, GivesTheIdKey) {
  PortDict dict;
  std::string out;
  EXPECT_EQ(&dict.registerPortKey("devA.slot0.in[12].mic.ch3", out), &out);
  EXPECT_EQ(out, "0.0.0[C].0.3");
  EXPECT_EQ(dict.maxPortId, 12U);
  EXPECT_EQ(dict.maxCh, 3U);
  dict.registerPortKey("devB.slot0.out[5].mic.ch1", out);
  EXPECT_EQ(out, "1.0.1[5].0.1");
  EXPECT_EQ(dict.maxPortId, 12U);
  EXPECT_EQ(dict.maxCh, 3U);
}

TEST(RegisterPort, GivesTheFieldsAsNumbers) {
  PortDict dict;
  dict.registerPort("devA.slot0.in[12].mic.ch3");
  const std::optional<PortKeyIds> ids = dict.registerPort("devB.slot0.out[5].mic.ch1");
  ASSERT_TRUE(ids);
  EXPECT_EQ(printIdKey(*ids), "1.0.1[5].0.1");
  EXPECT_FALSE(dict.registerPort("Vox"));
  dict.computeWidths();
  // Widths: 2 for channels to 3, 4 for ports to 12, 1 for two prefixes and for two devices.
  const std::uint64_t packed = 1U + (5U << 2U) + (1U << 6U) + (1U << 7U);
  EXPECT_EQ(dict.packIds(*ids), packed);
  EXPECT_EQ(printIdKey(dict.unpackIds(packed)), "1.0.1[5].0.1");
}

TEST(RegisterPortKey, LeavesEverythingAloneWithoutAPortKey) {
  PortDict dict;
  std::string out = "before";
  dict.registerPortKey("Vox", out);
  EXPECT_EQ(out, "before");
  EXPECT_EQ(dict.device.size(), 0U);
}

TEST(ComputeWidths, FitTheData) {
  const auto deviceBits = [](std::initializer_list<const char*> keys) {
    return dictOf(keys).bits[kDevice];
  };
  EXPECT_EQ(deviceBits({}), 0);
  EXPECT_EQ(deviceBits({"a.s.p[0].t.ch0"}), 0);
  EXPECT_EQ(deviceBits({"a.s.p[0].t.ch0", "b.s.p[0].t.ch0"}), 1);
  EXPECT_EQ(deviceBits({"a.s.p[0].t.ch0", "b.s.p[0].t.ch0", "c.s.p[0].t.ch0"}), 2);
  EXPECT_EQ(deviceBits({"a.s.p[0].t.ch0", "b.s.p[0].t.ch0", "c.s.p[0].t.ch0", "d.s.p[0].t.ch0"}),
            2);
  EXPECT_EQ(deviceBits({"a.s.p[0].t.ch0", "b.s.p[0].t.ch0", "c.s.p[0].t.ch0", "d.s.p[0].t.ch0",
                        "e.s.p[0].t.ch0"}),
            3);
}

TEST(ComputeWidths, CountMaximaFrom0) {
  const auto chBits = [](const char* key) { return dictOf({key}).bits[kCh]; };
  EXPECT_EQ(chBits("a.s.p[0].t.ch0"), 0);
  EXPECT_EQ(chBits("a.s.p[0].t.ch1"), 1);
  EXPECT_EQ(chBits("a.s.p[0].t.ch2"), 2);
  EXPECT_EQ(chBits("a.s.p[0].t.ch3"), 2);
  EXPECT_EQ(chBits("a.s.p[0].t.ch4"), 3);
  EXPECT_EQ(chBits("a.s.p[0].t.ch65535"), 16);
  EXPECT_EQ(chBits("a.s.p[0].t.ch65536"), 17);
  EXPECT_EQ(chBits("a.s.p[0].t.ch2147483647"), 31);
  EXPECT_EQ(dictOf({"a.s.p[16777215].t.ch0"}).bits[kPortId], 24);
}

TEST(ComputeWidths, TakeNegativeNumbersAsVeryLargeOnes) {
  EXPECT_EQ(dictOf({"a.s.p[0].t.ch-2"}).bits[kCh], 32);
  EXPECT_EQ(dictOf({"a.s.p[-2147483648].t.ch0"}).bits[kPortId], 32);
}

TEST(ComputeWidths, ACountOf2To32WrapsTo0) {
  EXPECT_EQ(dictOf({"a.s.p[0].t.ch-1"}).bits[kCh], 0);
  EXPECT_EQ(dictOf({"a.s.p[-1].t.ch0"}).bits[kPortId], 0);
}

TEST(ComputeShifts, PutTheChannelLowest) {
  PortDict dict;
  dict.bits = {2, 1, 4, 1, 2, 3};
  EXPECT_EQ(dict.computeShifts(), 13U);
  EXPECT_EQ(dict.shift, (Positions{0, 2, 3, 7, 8, 10}));
  EXPECT_EQ(dict.mask, (Positions{3, 4, 120, 128, 768, 7168}));
}

TEST(ComputeShifts, CutMasksAt32Bits) {
  PortDict dict;
  dict.bits = {8, 0, 25, 2, 31, 1};
  EXPECT_EQ(dict.computeShifts(), 67U);
  EXPECT_EQ(dict.shift, (Positions{0, 8, 8, 33, 35, 66}));
  EXPECT_EQ(dict.mask, (Positions{255, 0, 0xFFFFFF00U, 0, 0, 0}));
}

TEST(PackIdKey, LaysTheFieldsSideBySide) {
  PortDict dict = dictOf(
      {"Stage.slot0.in[1].mic.ch1", "FOH.slot1.out[12].line.ch3", "FOH.slot2.out[1].mic.ch0"});
  EXPECT_EQ(dict.bits, (Widths{2, 1, 4, 1, 2, 1}));
  std::string idKey;
  EXPECT_EQ(dict.registerPortKey("FOH.slot2.in[12].line.ch3", idKey), "1.2.0[C].1.3");
  // 1 10 0 1100 1 11
  EXPECT_EQ(dict.packIdKey(idKey), 1639U);
  EXPECT_EQ(dict.unpackToPortKey(1639), "FOH.slot2.in[12].line.ch3");
}

TEST(PackIdKey, OneOfEachAndChannel0GiveThePortId) {
  PortDict dict = dictOf({"d.s.in[12].t.ch0", "d.s.in[5].t.ch0"});
  EXPECT_EQ(packed(dict, "d.s.in[12].t.ch0"), 12U);
  EXPECT_EQ(packed(dict, "d.s.in[5].t.ch0"), 5U);
  EXPECT_EQ(packed(dict, "d.s.in[0].t.ch0"), 0U);
}

TEST(PackIdKey, BitsBeyond32AreLost) {
  PortDict dict = dictOf({"a.s.in[2147483647].t.ch1", "b.s.in[1].t.ch0"});
  EXPECT_EQ(packed(dict, "a.s.in[2147483647].t.ch1"), 4294967295U);
  EXPECT_EQ(packed(dict, "b.s.in[1].t.ch0"), 2U);
}

TEST(PackIdKey, WiderValuesSpillIntoTheNextField) {
  PortDict dict;
  dict.bits = {1, 1, 2, 0, 0, 0};
  dict.computeShifts();
  EXPECT_EQ(dict.packIdKey("0.0.0[0].0.5"), 5U);
  EXPECT_EQ(dict.packIdKey("0.0.0[7].0.0"), 28U);
}

TEST(PackIdKey, FieldsThatDoNotScanAre0) {
  PortDict dict;
  dict.bits = {4, 4, 4, 4, 4, 4};
  dict.computeShifts();
  EXPECT_EQ(dict.packIdKey("1.2.3[x"), 0x123000U);
  EXPECT_EQ(dict.packIdKey("no key"), 0U);
}

TEST(UnpackToPortKey, AFieldUpToBit31TakesInTheUpperHalf) {
  const PortDict dict = withBitPacking("${device,0}#{port_id,24}#{ch,8}");
  EXPECT_EQ(dict.unpackToPortKey(0x100000503), "d.slot0.in[16777221].t.ch3");
  EXPECT_EQ(dict.unpackToPortKey(0x503), "d.slot0.in[5].t.ch3");
  EXPECT_EQ(dict.unpackToPortKey(0xFFFFFFFFFFFFFFFF), "d.slot0.in[-1].t.ch255");
}

TEST(UnpackToPortKey, AFieldBelowBit31DoesNot) {
  const PortDict dict = withBitPacking("${device,0}#{port_id,23}#{ch,8}");
  EXPECT_EQ(dict.unpackToPortKey(0x1080000503), "d.slot0.in[5].t.ch3");
}

TEST(UnpackToPortKey, FieldsBeyond32BitsAre0) {
  const PortDict dict = withBitPacking("#{port_id,8}#{ch,32}");
  EXPECT_EQ(dict.unpackToPortKey(0xFF00000007), "d.slot0.in[0].t.ch7");
}

TEST(UnpackToPortKey, AnUnknownIdLeavesItsTextEmpty) {
  const PortDict dict = loaded(
      R"({"version": 2, "refMaps": {"slot": [[1, "s"]]}, "bitPacking": "${device,1}#{ch,1}"})");
  EXPECT_EQ(dict.unpackToPortKey(3), "..[0]..ch1");
}

TEST(RenameDevice, ChangesOnlyTheName) {
  PortDict dict = dictOf({"Stage.s.in[1].t.ch0", "FOH.s.in[1].t.ch0"});
  EXPECT_EQ(dict.renameDevice("FOH", "SN2"), 0);
  EXPECT_EQ(dict.renameDevice("FOH", "SN3"), 1);
  EXPECT_EQ(dict.unpackToPortKey(3), "SN2.s.in[1].t.ch0");
}

TEST(PortDictToJson, WritesVersionMapsAndBitPacking) {
  const PortDict dict = dictOf({"devA.slot0.in[12].mic.ch3", "devB.slot0.in[1].mic.ch0"});
  EXPECT_EQ(test::jsonOf(dict),
            "{\n"
            "\t\"version\":\t2,\n"
            "\t\"refMaps\":\t{\n"
            "\t\t\"device\":\t[[0, \"devA\"], [1, \"devB\"]],\n"
            "\t\t\"slot\":\t[[0, \"slot0\"]],\n"
            "\t\t\"port_prefix\":\t[[0, \"in\"]],\n"
            "\t\t\"type\":\t[[0, \"mic\"]]\n"
            "\t},\n"
            "\t\"bitPacking\":\t\"${device,1}.${slot,0}.${port_prefix,0}[#{port_id,4}]."
            "${type,0}.ch#{ch,2}\"\n"
            "}");
}

TEST(PortDictToJson, WritesTheWidthsGiven) {
  PortDict dict;
  dict.version = 7;
  dict.bits = {2, 1, 4, 1, 2, 3};
  const CJsonDocument written = parseCJson(test::jsonOf(dict));
  EXPECT_EQ(cJSON_GetObjectItem(written.get(), "version")->valueint, 2);
  EXPECT_STREQ(cJSON_GetObjectItem(written.get(), "bitPacking")->valuestring,
               "${device,3}.${slot,2}.${port_prefix,1}[#{port_id,4}].${type,1}.ch#{ch,2}");
  EXPECT_EQ(printed(buildCJson([&] { return dict.widthsToJson(); })),
            "[[\"ch\", 2], [\"type\", 1], [\"port_id\", 4], [\"port_prefix\", 1], [\"slot\", 2], "
            "[\"device\", 3]]");
}

TEST(PortDictFromJson, IsTheReverseOfWriting) {
  const PortDict dict = dictOf(
      {"devA.slot0.in[12].mic.ch3", "devB.slot3.in[1].mic.ch0", "devC.slot3.out[1].line.ch0"});
  const PortDict copy = loaded(test::jsonOf(dict));
  EXPECT_EQ(copy.bits, dict.bits);
  EXPECT_EQ(copy.shift, dict.shift);
  EXPECT_EQ(copy.mask, dict.mask);
  EXPECT_EQ(test::jsonOf(copy), test::jsonOf(dict));
}

TEST(PortDictFromJson, WantsVersionAndRefMaps) {
  for (const char* json : {R"({"version": 9})", R"({"refMaps": {}})", "{}", "5", "[1]"}) {
    PortDict dict;
    const std::error_code failure = dict.fromJson(*parseCJson(json));
    EXPECT_EQ(failure, std::error_code(22, std::generic_category())) << json;
    EXPECT_EQ(dict.version, 2U) << json;
  }
}

TEST(PortDictFromJson, ReadsNoMapsWithoutBitPacking) {
  for (const char* bitPacking : {"", R"(, "bitPacking": 5)", R"(, "bitPacking": null)"}) {
    PortDict dict;
    const std::string json =
        std::string(R"({"version": 9, "refMaps": {"device": [[0, "d"]], "slot": []})") +
        bitPacking + "}";
    const std::error_code success = dict.fromJson(*parseCJson(json));
    EXPECT_EQ(success, std::error_code(0, std::system_category())) << bitPacking;
    EXPECT_EQ(dict.version, 9U);
    EXPECT_EQ(dict.device.size() + dict.slot.size() + dict.port_prefix.size() + dict.type.size(),
              0U);
  }
}

TEST(PortDictFromJson, FindsFieldsByNameAndMapsInAnyCase) {
  const PortDict dict = loaded(
      R"({"VERSION": 3, "RefMaps": {"DEVICE": [[0, "d"], [1, "e"]]},
          "bitpacking": "#{device,1}${Slot,4}${more,9}${ch,2}"})");
  EXPECT_EQ(dict.version, 3U);
  EXPECT_EQ(dict.bits, (Widths{2, 0, 0, 0, 0, 1}));
  EXPECT_EQ(dict.unpackToPortKey(7), "e.slot0.[0]..ch3");
}

TEST(PortDictFromJson, FieldsAreLaidInTheirFixedOrder) {
  const PortDict dict = withBitPacking("#{ch,2}${device,1}#{port_id,3}");
  EXPECT_EQ(dict.shift, (Positions{0, 2, 2, 5, 5, 5}));
  EXPECT_EQ(dict.unpackToPortKey(0x17), "d.slot0.in[5].t.ch3");
}

TEST(PortDictFromJson, AnEmptyBitPackingLeavesTheWidths) {
  PortDict dict = dictOf({"a.s.in[1].t.ch3"});
  EXPECT_FALSE(dict.fromJson(*parseCJson(
      R"({"version": 2, "refMaps": {"device": [[0, "z"]]}, "bitPacking": "nothing"})")));
  EXPECT_EQ(dict.bits, (Widths{2, 0, 1, 0, 0, 0}));
  EXPECT_EQ(dict.unpackToPortKey(7), "z.s.in[1].t.ch3");
}

TEST(PortDictFromJson, NamesTheSlotsThatAreNotListed) {
  const PortDict dict = withBitPacking("${slot,2}#{ch,1}");
  EXPECT_EQ(test::jsonOf(dict.slot),
            "[[0, \"slot0\"], [1, \"slot1\"], [2, \"slot2\"], [3, \"slot3\"]]");
  EXPECT_EQ(dict.unpackToPortKey(7), "d.slot3.in[0].t.ch1");
  EXPECT_EQ(test::jsonOf(withBitPacking("#{ch,1}").slot), "[[0, \"slot0\"]]");
}

TEST(PortDictFromJson, NoSlotBeyondTheWidthHasAName) {
  // The slot takes in the upper half of the number: its id is 255, 256 and 257.
  const PortDict dict = withBitPacking("${slot,8}#{ch,24}");
  EXPECT_EQ(dict.unpackToPortKey(0xFF000003), "d.slot255.in[0].t.ch3");
  EXPECT_EQ(dict.unpackToPortKey(0x100000003), "d..in[0].t.ch3");
  EXPECT_EQ(dict.unpackToPortKey(0x101000003), "d..in[0].t.ch3");
}

TEST(PortDictFromJson, AnAbsurdSlotWidthFillsNoMemory) {
  const PortDict wide = withBitPacking("${slot,31}");
  EXPECT_LE(wide.slot.size(), 65536U);
  EXPECT_EQ(wide.unpackToPortKey(65535), "d.slot65535.in[0].t.ch0");
  EXPECT_EQ(wide.unpackToPortKey(65536), "d.slot65536.in[0].t.ch0");
  EXPECT_EQ(wide.unpackToPortKey(2147483647), "d.slot2147483647.in[0].t.ch0");
  const PortDict wider = withBitPacking("${slot,32}");
  EXPECT_EQ(wider.unpackToPortKey(4294967295), "d.slot4294967295.in[0].t.ch0");
  const PortDict narrowField = withBitPacking("${slot,17}");
  EXPECT_EQ(narrowField.unpackToPortKey(131071), "d.slot131071.in[0].t.ch0");
  for (const char* bitPacking : {"${slot,1000000}", "${slot,4294967295}", "${slot,-1}"}) {
    const PortDict absurd = withBitPacking(bitPacking);
    EXPECT_LE(absurd.slot.size(), 65536U) << bitPacking;
    EXPECT_EQ(absurd.unpackToPortKey(0), "d.slot0.in[0].t.ch0") << bitPacking;
  }
}

TEST(PortDictFromJson, AWidthAbove2To31TakesNoPart) {
  EXPECT_EQ(withBitPacking("#{port_id,3}#{ch,4294967295}").unpackToPortKey(7),
            "d.slot0.in[0].t.ch0");
}

TEST(PortDictFromJson, ListedSlotsAreNotAddedTo) {
  const PortDict dict =
      loaded(R"({"version": 2, "refMaps": {"slot": [[0, "rack"]]}, "bitPacking": "${slot,2}"})");
  EXPECT_EQ(dict.slot.size(), 1U);
  EXPECT_EQ(dict.unpackToPortKey(1), "..[0]..ch0");
}

constexpr const char* kBitPacking =
    "${device,1}.${slot,2}.${port_prefix,3}[#{port_id,4}].${type,5}.ch#{ch,6}";
constexpr FieldWidths kWidths = {6, 5, 4, 3, 2, 1};

TEST(FieldWidths, SpellsAPortKeyWithTheWidthsOfItsFields) {
  EXPECT_EQ(writeWidths(kWidths), kBitPacking);
}

TEST(FieldWidths, IsReadBack) {
  FieldWidths widths{};
  EXPECT_TRUE(parseWidths(kBitPacking, widths));
  EXPECT_EQ(widths, kWidths);
}

TEST(FieldWidths, LeavesTheWidthsThatItDoesNotName) {
  FieldWidths widths = kWidths;
  EXPECT_TRUE(parseWidths("#{ch,9} ${other,7} type", widths));
  EXPECT_EQ(widths, (FieldWidths{9, 5, 4, 3, 2, 1}));
}

TEST(FieldWidths, MayNameNoFieldThatIsKnown) {
  FieldWidths widths = kWidths;
  EXPECT_TRUE(parseWidths("device.${other,7}", widths));
  EXPECT_TRUE(parseWidths("device$", widths));
  EXPECT_EQ(widths, kWidths);
}

TEST(FieldWidths, HoldsNothingWithoutAField) {
  FieldWidths widths = kWidths;
  EXPECT_FALSE(parseWidths("", widths));
  EXPECT_FALSE(parseWidths("device.slot", widths));
  EXPECT_EQ(widths, kWidths);
}

const std::vector<DeviceLabel>& devices() {
  static const std::vector<DeviceLabel> list = {
      {"SN1", "Stage", "S"}, {"SN1", "Other", "S"}, {"SN2", "", "S"}, {"SN3", "SN3", "S"}};
  return list;
}

PortDict dictOfDevices(std::initializer_list<const char*> names) {
  PortDict dict;
  for (const char* name : names) {
    dict.device.add(name);
  }
  return dict;
}

std::string namesOf(const PortDict& dict) { return test::jsonOf(dict.device); }

TEST(NameDevices, ById) {
  PortDict dict = dictOfDevices({"Stage", "SN3", "unknown"});
  nameDevicesById(devices(), dict);
  EXPECT_EQ(namesOf(dict), R"([[0, "SN1"], [1, "SN3"], [2, "unknown"]])");
}

TEST(NameDevices, ByLabel) {
  PortDict dict = dictOfDevices({"SN1", "SN3", "SN2"});
  nameDevicesByLabel(devices(), dict);
  EXPECT_EQ(namesOf(dict), R"([[0, "Stage"], [1, "SN3"], [2, ""]])");
}

TEST(NameDevices, ATakenNameStops) {
  PortDict dict = dictOfDevices({"Stage", "SN1"});
  nameDevicesById(devices(), dict);
  EXPECT_EQ(namesOf(dict), R"([[0, "Stage"], [1, "SN1"]])");
}

TEST(NameDevices, OneAfterTheOtherInListOrder) {
  PortDict dict = dictOfDevices({"a", "b"});
  nameDevicesById({{"c", "a", ""}, {"a", "b", ""}, {"b", "c", ""}}, dict);
  EXPECT_EQ(namesOf(dict), R"([[0, "b"], [1, "a"]])");
}

TEST(PortDictFromJson, ListedSlotsEndTheNumberedOnes) {
  PortDict dict = withBitPacking("${slot,2}");
  EXPECT_EQ(dict.unpackToPortKey(3), "d.slot3.in[0].t.ch0");
  EXPECT_FALSE(dict.fromJson(*parseCJson(R"({"version": 2, "bitPacking": "${slot,2}",
                 "refMaps": {"slot": [[0, "s"]]}})")));
  EXPECT_EQ(dict.unpackToPortKey(3), "d..in[0].t.ch0");
}

}  // namespace
}  // namespace quenfold
