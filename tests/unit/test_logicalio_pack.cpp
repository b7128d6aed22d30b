#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <vector>

#include "json/cjson_tree.h"
#include "support/failing_memory.h"
#include "support/logicalio_folder.h"

namespace quenfold {
namespace {

using test::kDevices;
using test::kPortLabels;
using test::LogicalIOFolder;

constexpr const char* kSources = R"({"LogicalSources": {"version": 10, "levelKeys": [1, 2, 3],
  "LogicalSource": [
    {"name": "Cam 1", "id": 7, "key": 0, "val": ["Stage.slot0.in[1].mic.ch1", "", "Vox", ""],
     "description": "", "category": ["5", "Show", "", "x", "", ""], "tally": "T1", "redirect": 1},
    {"name": "é", "id": -1, "val": ["", 5, "FOH.slot1.in[1].mic.ch0"], "redirect": 4,
     "description": "left", "online": true}]}})";

/// What stands in the ports file and in the hash file.
constexpr const char* kHash = R"("hash":	{
			"category":	1740965305,
			"description":	2158103027,
			"id":	2525627808,
			"key":	633243907,
			"name":	1563114135,
			"online":	453165582,
			"port":	3888020533,
			"redirect":	4055879026,
			"tally":	3023430481
		})";

/// A sources document with these entries.
std::string sourcesOf(const std::string& entries) {
  return R"({"LogicalSources": {"LogicalSource": [)" + entries + "]}}";
}

/// What packing writes, without any blanks between the tokens.
std::string compact(const LogicalIOFolder& folder, const char* name) {
  const CJsonDocument document = parseCJson(folder.bytesOf(name));
  const std::unique_ptr<char, void (*)(void*)> text(cJSON_PrintUnformatted(document.get()),
                                                    cJSON_free);
  return text.get();
}

/// A member of the packed sources table, compact.
std::string packedMember(const std::string& input, const char* member) {
  const LogicalIOFolder folder;
  folder.pack(input);
  const CJsonDocument document = parseCJson(folder.bytesOf("logicalSourcesPorts.json"));
  const cJSON* const value = cJSON_GetObjectItem(document->child, member);
  const std::unique_ptr<char, void (*)(void*)> text(cJSON_PrintUnformatted(value), cJSON_free);
  return text.get();
}

std::string packedRecords(const std::string& entries) {
  return packedMember(sourcesOf(entries), "logicalIO");
}

std::string packedHash(const std::string& entries) {
  return packedMember(sourcesOf(entries), "hash");
}

std::string packMessage(const std::string& input) {
  const LogicalIOFolder folder;
  std::string message = test::messageOf([&] { folder.pack(input); });
  EXPECT_FALSE(folder.has("logicalSourcesPorts.json"));
  return message;
}

TEST(PackLogicalIO, WritesThePortsFile) {
  const LogicalIOFolder folder(kDevices, kPortLabels);
  folder.pack(kSources);
  EXPECT_EQ(folder.bytesOf("logicalSourcesPorts.json"), R"({
	"logicalSources":	{
		"version":	10,
		"portDict":	{
			"version":	2,
			"refMaps":	{
				"device":	[[0, "SN1"], [1, "SN2"]],
				"slot":	[[0, "slot0"], [1, "slot1"]],
				"port_prefix":	[[0, "in"]],
				"type":	[[0, "mic"]]
			},
			"bitPacking":	"${device,1}.${slot,1}.${port_prefix,0}[#{port_id,2}].${type,0}.ch#{ch,1}"
		},
		"levelKeys":	[1, 2, 3],
		)" + std::string(kHash) + R"(,
		"logicalIO":	[{
				"id":	7,
				"tally":	"T1",
				"port":	[3, "", 28]
			}, {
				"id":	-1,
				"redirect":	4,
				"description":	"left",
				"port":	["", "", 26]
			}]
	}
})");
}

TEST(PackLogicalIO, WritesTheSideFiles) {
  const LogicalIOFolder folder(kDevices, kPortLabels);
  folder.pack(kSources);
  EXPECT_EQ(folder.bytesOf("logicalSourcesLabels.json"), R"({
	"logicalSourcesLabels":	{
		"version":	10,
		"hash":	1563114135,
		"labels":	[[7, "Cam 1"], [-1, "é"]]
	}
})");
  EXPECT_EQ(folder.bytesOf("logicalSourcesLegacyCategories.json"), R"({
	"logicalSourcesLegacyCategories":	{
		"version":	10,
		"hash":	1740965305,
		"legacyCategories":	[[7, [5, "Show"]]]
	}
})");
}

TEST(PackLogicalIO, WritesTheHashFileBesideTheInput) {
  const LogicalIOFolder folder(kDevices, kPortLabels);
  folder.pack(kSources);
  EXPECT_EQ(folder.bytesOf("in.hash"), R"({
	"LogicalSources":	{
		)" + std::string(kHash) + R"(
	}
})");
}

TEST(PackLogicalIO, ReturnsTheBytesOfPortsAndLabels) {
  const LogicalIOFolder folder(kDevices, kPortLabels);
  const std::size_t returned = folder.pack(kSources);
  EXPECT_EQ(returned, folder.bytesOf("logicalSourcesPorts.json").size() +
                          folder.bytesOf("logicalSourcesLabels.json").size());
}

TEST(PackLogicalIO, WithoutAnInputNameThereIsNoHashFile) {
  const LogicalIOFolder folder;
  convertVelmoraToPacked(folder.path(), "", sourcesOf(""), folder.path());
  EXPECT_TRUE(folder.has("logicalSourcesPorts.json"));
  EXPECT_FALSE(folder.has(".hash"));
}

TEST(PackLogicalIO, EmptyDirectoriesMeanTheCurrentOne) {
  const LogicalIOFolder folder;
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  convertVelmoraToPacked("", "in", sourcesOf(""), "");
  std::filesystem::current_path(before);
  EXPECT_TRUE(folder.has("logicalSourcesPorts.json"));
  EXPECT_TRUE(folder.has("logicalSourcesLabels.json"));
  EXPECT_TRUE(folder.has("logicalSourcesLegacyCategories.json"));
  EXPECT_TRUE(folder.has("in.hash"));
}

TEST(PackLogicalIO, ADoubledSlashDoesNoHarm) {
  const LogicalIOFolder folder;
  convertVelmoraToPacked(folder.path() + "/", "", sourcesOf(""), folder.path() + "/");
  EXPECT_TRUE(folder.has("logicalSourcesPorts.json"));
}

TEST(PackLogicalIO, WritesPortsLabelsCategoriesAndHashInThisOrder) {
  const std::vector<std::string> names = {"logicalSourcesPorts.json", "logicalSourcesLabels.json",
                                          "logicalSourcesLegacyCategories.json", "in.hash"};
  for (std::size_t blocked = 0; blocked < names.size(); ++blocked) {
    const LogicalIOFolder folder;
    std::filesystem::create_directory(folder.path(names[blocked]));
    EXPECT_EQ(test::messageOf([&] { folder.pack(sourcesOf("")); }),
              "error while opening file: " + folder.path(names[blocked]));
    for (std::size_t i = 0; i < names.size(); ++i) {
      EXPECT_EQ(folder.has(names[i]), i <= blocked) << names[i];
    }
  }
}

// Tables

TEST(PackLogicalIO, KnowsThreeTables) {
  const auto outcome = [](const char* input) {
    const LogicalIOFolder folder;
    folder.pack(input);
    return compact(folder, folder.has("logicalDestinationsPorts.json")
                               ? "logicalDestinationsLabels.json"
                               : "logicalSourcesLabels.json") +
           compact(folder, "in.hash").substr(0, 18);
  };
  EXPECT_EQ(outcome(R"({"logicalDests": {"logicalDest": [{"name": "A", "id": 1, "oid": []}]}})"),
            R"({"logicalDestinationsLabels":{"version":10,"hash":4215536289,"labels":[[1,"A"]]}})"
            R"({"logicalDests":{")");
  EXPECT_EQ(outcome(R"({"LogicalDestinations":
                        {"LogicalDestination": [{"name": "A", "id": 1, "oid": []}]}})"),
            R"({"logicalDestinationsLabels":{"version":10,"hash":4215536289,"labels":[[1,"A"]]}})"
            R"({"LogicalDestinati)");
  EXPECT_EQ(
      outcome(R"({"LogicalSources": {"LogicalSource": [{"name": "A", "id": 1, "val": []}]}})"),
      R"({"logicalSourcesLabels":{"version":10,"hash":4215536289,"labels":[[1,"A"]]}})"
      R"({"LogicalSources":)");
}

TEST(PackLogicalIO, TriesTheTablesInOrder) {
  const LogicalIOFolder folder;
  folder.pack(R"({"LogicalSources": {"LogicalSource": []},
                  "LogicalDestinations": {"LogicalDestination": []},
                  "logicalDests": {"logicalDest": []}})");
  EXPECT_EQ(compact(folder, "in.hash"), R"({"logicalDests":{"hash":{}}})");
  EXPECT_FALSE(folder.has("logicalSourcesPorts.json"));
}

TEST(PackLogicalIO, IgnoresTheCaseOfTopLevelKeys) {
  const LogicalIOFolder folder;
  folder.pack(R"({"LOGICALSOURCES": {"LOGICALSOURCE": [{"name": "A", "id": 1, "val": []}],
                                     "LEVELKEYS": [4]}})");
  EXPECT_EQ(compact(folder, "in.hash"),
            R"({"LogicalSources":{"hash":{"id":453165582,"name":4215536289}}})");
  EXPECT_NE(compact(folder, "logicalSourcesPorts.json").find(R"("levelKeys":[4])"),
            std::string::npos);
}

TEST(PackLogicalIO, RefusesAnUnknownTable) {
  EXPECT_EQ(packMessage(R"({"foo": 5})"), "Unknown logical IO Type: ");
  EXPECT_EQ(packMessage(R"({"foo": "bar", "x": "y"})"), "Unknown logical IO Type: bar");
  EXPECT_EQ(packMessage("{}"), "Unknown logical IO Type: ");
  EXPECT_EQ(packMessage("null"), "Unknown logical IO Type: ");
  EXPECT_EQ(packMessage("5"), "Unknown logical IO Type: ");
  EXPECT_EQ(packMessage(R"(["LogicalSources"])"), "Unknown logical IO Type: LogicalSources");
}

TEST(PackLogicalIO, ATableWithoutEntriesIsNoticed) {
  for (const char* table : {"{}", "5", "null", "[[1]]", "\"x\""}) {
    const LogicalIOFolder folder;
    EXPECT_EQ(test::standardErrorOf(
                  [&] { folder.pack(std::string(R"({"LogicalSources": )") + table + "}"); }),
              "createLogicalDestsDict: logical IO table not found. Creating empty I/O rows\n")
        << table;
    EXPECT_NE(compact(folder, "logicalSourcesPorts.json").find(R"("logicalIO":[])"),
              std::string::npos);
  }
}

TEST(PackLogicalIO, EntriesThatAreNoListAreNone) {
  const LogicalIOFolder folder;
  EXPECT_EQ(test::standardErrorOf(
                [&] { folder.pack(R"({"LogicalSources": {"LogicalSource": "text"}})"); }),
            "");
  EXPECT_NE(compact(folder, "logicalSourcesPorts.json").find(R"("logicalIO":[])"),
            std::string::npos);
}

TEST(PackLogicalIO, LevelKeysAreIntegers) {
  const auto levelKeys = [](const char* member) {
    return packedMember(std::string(R"({"LogicalSources": {"LogicalSource": [])") + member + "}}",
                        "levelKeys");
  };
  EXPECT_EQ(levelKeys(""), "[]");
  EXPECT_EQ(levelKeys(R"(, "levelKeys": [])"), "[]");
  EXPECT_EQ(levelKeys(R"(, "levelKeys": 5)"), "[]");
  EXPECT_EQ(levelKeys(R"(, "levelKeys": [3, "4", true, null, 2.9])"), "[3,0,1,0,2]");
}

// Entries

TEST(PackLogicalIO, ARecordWithoutTallyAndRedirectHasIdAndPort) {
  EXPECT_EQ(packedRecords(R"({"name": "A", "id": 5, "val": ["d.s.p[3].t.ch0"]})"),
            R"([{"id":5,"port":[3]}])");
}

TEST(PackLogicalIO, WritesOptionalMembersInTheirOrder) {
  EXPECT_EQ(packedRecords(R"({"description": "D", "redirect": 0, "tally": "T", "val": [],
                              "id": 5, "name": "A"})"),
            R"([{"id":5,"tally":"T","redirect":0,"description":"D","port":[]}])");
  EXPECT_EQ(packedRecords(R"({"description": "", "redirect": 1, "tally": "", "val": [],
                              "id": 5, "name": "A"})"),
            R"([{"id":5,"port":[]}])");
}

TEST(PackLogicalIO, KeepsGapsBeforeAndBetweenPortsAndDropsThoseAfter) {
  EXPECT_EQ(packedRecords(R"({"name": "A", "id": 1,
                              "val": ["", "d.s.p[3].t.ch0", 5, "d.s.p[1].t.ch0", ""]})"),
            R"([{"id":1,"port":["",3,"",1]}])");
  EXPECT_EQ(packedRecords(R"({"name": "A", "id": 1, "val": [null, [], {}, "d.s.p[3].t.ch0"]})"),
            R"([{"id":1,"port":["","","",3]}])");
  EXPECT_EQ(packedRecords(R"({"name": "A", "id": 1, "val": ["", "", null]})"),
            R"([{"id":1,"port":[]}])");
}

TEST(PackLogicalIO, APortThatIsNoPortKeyBecomesAnEmptyKey) {
  EXPECT_EQ(packedRecords(R"({"name": "A", "id": 1,
                              "val": ["", "Vox", "d.s.p[3].t.ch0", "", "d.s.p[].t.ch0"]})"),
            R"([{"id":1,"port":["","",3,"",""]}])");
}

TEST(PackLogicalIO, APortKeyFieldBeyondItsCapacityDoesNotScan) {
  const std::string longest(63, 'd');
  EXPECT_EQ(packedRecords(R"({"name": "A", "id": 1, "val": [")" + longest + R"(.s.p[3].t.ch0", ")" +
                          longest + R"(d.s.p[3].t.ch0"]})"),
            R"([{"id":1,"port":[3,""]}])");
}

TEST(PackLogicalIO, TakesThePortKeyOfALabel) {
  const LogicalIOFolder folder(kDevices, R"({"portLabels": {
      "SN1.s.p[3].t.ch0": "Vox", "SN1.s.p[2].t.ch0": "Vox", "none": "Bad"}})");
  folder.pack(sourcesOf(R"({"name": "A", "id": 1, "val": ["Vox", "Bad", "Stage.s.p[1].t.ch0"]})"));
  const std::string ports = compact(folder, "logicalSourcesPorts.json");
  EXPECT_NE(ports.find(R"("port":[2,"",1])"), std::string::npos) << ports;
  EXPECT_NE(ports.find(R"("device":[[0,"SN1"]])"), std::string::npos) << ports;
}

TEST(PackLogicalIO, PacksTheSameOnEveryHost) {
  EXPECT_EQ(packedRecords(R"({"name": "A", "id": 1,
                              "val": ["a.s.in[2147483647].t.ch1", "b.s.in[1].t.ch0"]})"),
            R"([{"id":1,"port":[4294967295,2]}])");
}

TEST(PackLogicalIO, MembersOfAnEntryAreExact) {
  EXPECT_EQ(packMessage(sourcesOf(R"({"Name": "A", "id": 1, "val": []})")), "name not found");
  EXPECT_EQ(packMessage(sourcesOf(R"({"name": "A", "ID": 1, "val": []})")), "id not found");
  EXPECT_EQ(packMessage(sourcesOf(R"({"name": "A", "id": 1, "Val": []})")),
            "ports entry not found: val");
  EXPECT_EQ(packedRecords(R"({"name": "A", "id": 1, "val": [], "Tally": "T", "oid": [1]})"),
            R"([{"id":1,"port":[]}])");
}

TEST(PackLogicalIO, ReportsEachFaultOfAnEntry) {
  EXPECT_EQ(packMessage(sourcesOf(R"({"name": null, "id": 1, "val": []})")),
            "name is not a string");
  EXPECT_EQ(packMessage(sourcesOf(R"({"name": 5})")), "name is not a string");
  EXPECT_EQ(packMessage(sourcesOf("{}")), "name not found");
  EXPECT_EQ(packMessage(sourcesOf(R"({"name": "A"})")), "id not found");
  EXPECT_EQ(packMessage(sourcesOf(R"({"name": "A", "id": 1})")), "ports entry not found: val");
  EXPECT_EQ(packMessage(R"({"logicalDests": {"logicalDest": [{"name": "A", "id": 1}]}})"),
            "ports entry not found: oid");
  for (const char* entry : {"[1]", "5", "\"name\"", "null", "[[1], \"x\"]"}) {
    EXPECT_EQ(packMessage(sourcesOf(entry)), "name not found") << entry;
  }
}

TEST(PackLogicalIO, IdAndRedirectTakeTheIntegerOfAnyValue) {
  EXPECT_EQ(packedRecords(R"({"name": "A", "id": "7", "redirect": null, "val": []},
                             {"name": "A", "id": true, "redirect": 1e20, "val": []},
                             {"name": "A", "id": -2.9, "redirect": true, "val": []})"),
            R"([{"id":0,"redirect":0,"port":[]},{"id":1,"redirect":2147483647,"port":[]},)"
            R"({"id":-2,"port":[]}])");
}

TEST(PackLogicalIO, TextsOfOtherTypesAreLeftOut) {
  EXPECT_EQ(packedRecords(R"({"name": "A", "id": 1, "tally": 5, "description": null, "val": 7})"),
            R"([{"id":1,"port":[]}])");
}

TEST(PackLogicalIO, OfARepeatedMemberTheLastWins) {
  const LogicalIOFolder folder;
  folder.pack(sourcesOf(R"({"name": "x", "name": "A", "id": 1, "id": 2, "tally": "T",
      "tally": 5, "category": [1], "category": [2], "val": ["", "d.s.p[3].t.ch0", ""],
      "val": ["d.s.p[1].t.ch0"]})"));
  const std::string ports = compact(folder, "logicalSourcesPorts.json");
  EXPECT_NE(ports.find(R"([{"id":2,"tally":"T","port":["",3,1]}])"), std::string::npos) << ports;
  EXPECT_NE(compact(folder, "logicalSourcesLabels.json").find(R"([[2,"A"]])"), std::string::npos);
  // Both category lists are in the fingerprint.
  EXPECT_EQ(compact(folder, "logicalSourcesLegacyCategories.json"),
            R"({"logicalSourcesLegacyCategories":{"version":10,"hash":1169157195,)"
            R"("legacyCategories":[[2,[2]]]}})");
}

// Fingerprints

TEST(PackLogicalIO, FingerprintsThatWereNeverFedAreNotListed) {
  EXPECT_EQ(packedHash(R"({"name": "", "id": 1, "val": [], "category": [""], "tally": "",
                           "x": null, "y": [1], "z": {"a": 1}})"),
            R"({"id":453165582})");
}

TEST(PackLogicalIO, AHashOf0InASideFileAddsNothing) {
  const LogicalIOFolder folder;
  folder.pack(sourcesOf(R"({"name": "", "id": 1, "val": []})"));
  EXPECT_EQ(compact(folder, "logicalSourcesLabels.json"),
            R"({"logicalSourcesLabels":{"version":10,"hash":0,"labels":[[1,""]]}})");
  EXPECT_EQ(compact(folder, "logicalSourcesLegacyCategories.json"),
            R"({"logicalSourcesLegacyCategories":{"version":10,"hash":0,"legacyCategories":[]}})");
  EXPECT_EQ(compact(folder, "in.hash"), R"({"LogicalSources":{"hash":{"id":453165582}}})");
}

TEST(PackLogicalIO, UnknownMembersAreFingerprintedUnderTheirNames) {
  EXPECT_EQ(packedHash(R"({"name": "p", "id": 1, "val": [], "": 1, "Name": "A", "flag": true,
                           "off": false, "text": "abc"})"),
            R"({"":453165582,"Name":4215536289,"flag":453165582,"id":453165582,"name":664711867,)"
            R"("off":633243907,"text":2887111950})");
}

TEST(PackLogicalIO, EmptyPortsAreFingerprintedAs32Bits) {
  EXPECT_EQ(packedHash(R"({"name": "p", "id": 1, "val": ["Vox"]})"),
            R"({"id":453165582,"name":664711867,"port":633243907})");
  EXPECT_EQ(packedHash(R"({"name": "p", "id": 1, "val": ["d.s.p[0].t.ch0"]})"),
            R"({"id":453165582,"name":664711867,"port":194091779})");
}

TEST(PackLogicalIO, BytesAreUnsigned) {
  EXPECT_EQ(packedHash("{\"name\": \"\xc3\xa9\", \"id\": 1, \"val\": []}"),
            R"({"id":453165582,"name":1929547409})");
}

// Devices

TEST(PackLogicalIO, DevicesWithoutALabelKeepTheirName) {
  const LogicalIOFolder folder(kDevices);
  folder.pack(sourcesOf(R"({"name": "A", "id": 1,
      "val": ["FOH.s.p[1].t.ch0", "Stage.s.p[1].t.ch0", "SN1.s.p[1].t.ch0", "x.s.p[1].t.ch0"]})"));
  const std::string ports = compact(folder, "logicalSourcesPorts.json");
  EXPECT_NE(ports.find(R"("device":[[0,"SN2"],[1,"Stage"],[2,"SN1"],[3,"x"]])"), std::string::npos)
      << ports;
}

TEST(PackLogicalIO, LabelFileErrorsEndThePack) {
  const test::ScratchFolder folder;
  EXPECT_EQ(test::messageOf(
                [&] { convertVelmoraToPacked(folder.path(), "", sourcesOf("{}"), folder.path()); }),
            "error while opening file: " + folder.path("dbpack_deviceLabels.json"));
  const LogicalIOFolder badDevices("[");
  EXPECT_EQ(test::messageOf([&] { badDevices.pack(sourcesOf("{}")); }),
            "parseDeviceLabels root is not object");
  const LogicalIOFolder badPorts(kDevices, std::string(200000, '['));
  EXPECT_EQ(test::messageOf([&] { badPorts.pack(sourcesOf("{}")); }),
            "loadPortLabels root is not object");
}

TEST(PackLogicalIO, TheTableIsChosenBeforeTheLabelFilesAreRead) {
  const test::ScratchFolder folder;
  EXPECT_EQ(
      test::messageOf([&] { convertVelmoraToPacked(folder.path(), "", "{}", folder.path()); }),
      "Unknown logical IO Type: ");
}

// Texts that do not parse

TEST(PackLogicalIO, ATextThatDoesNotParsePacksAsAnEmptyTable) {
  const test::ScratchFolder folder;
  const std::string input = folder.path("old-sources.json");
  convertVelmoraToPacked("no-such-folder", input, "{\"LogicalSources\": ", folder.path());
  EXPECT_EQ(folder.bytesOf("logicalSourcesPorts.json"), R"({
	"logicalSources":	{
		"version":	10,
		"portDict":	{
			"version":	2,
			"refMaps":	{
				"device":	[],
				"slot":	[],
				"port_prefix":	[],
				"type":	[]
			},
			"bitPacking":	"${device,0}.${slot,0}.${port_prefix,0}[#{port_id,0}].${type,0}.ch#{ch,0}"
		},
		"levelKeys":	[],
		"hash":	{
		},
		"logicalIO":	[]
	}
})");
  EXPECT_EQ(folder.bytesOf("logicalSourcesLabels.json"), R"({
	"logicalSourcesLabels":	{
		"version":	10,
		"hash":	0,
		"labels":	[]
	}
})");
  EXPECT_EQ(folder.bytesOf("logicalSourcesLegacyCategories.json"), R"({
	"logicalSourcesLegacyCategories":	{
		"version":	10,
		"hash":	0,
		"legacyCategories":	[]
	}
})");
  EXPECT_EQ(folder.bytesOf("old-sources.json.hash"), R"({
	"":	{
		"hash":	{
		}
	}
})");
}

TEST(PackLogicalIO, ATextThatDoesNotParseIsNamedAfterItsFile) {
  const auto outputOf = [](const char* name) {
    const test::ScratchFolder folder;
    convertVelmoraToPacked("", folder.path(name), "", folder.path());
    std::string found;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      const std::string file = entry.path().filename();
      found += file.find("Ports.json") == std::string::npos ? "" : file;
    }
    return found;
  };
  EXPECT_EQ(outputOf("sources.json"), "logicalSourcesPorts.json");
  EXPECT_EQ(outputOf("destinations.json.bak"), "logicalDestinationsPorts.json");
  EXPECT_EQ(outputOf("destinations.json-sources.json"), "logicalSourcesPorts.json");
  EXPECT_EQ(outputOf("Sources.json"), "Ports.json");
}

TEST(PackLogicalIO, WithoutAnyKeyTheSideFilesHaveBareNames) {
  const test::ScratchFolder folder;
  convertVelmoraToPacked("", "", "x", folder.path());
  EXPECT_EQ(folder.bytesOf("Labels.json").substr(0, 13), "{\n\t\"Labels\":\t");
  EXPECT_EQ(folder.bytesOf("LegacyCategories.json").substr(0, 23), "{\n\t\"LegacyCategories\":\t");
  EXPECT_EQ(folder.bytesOf("Ports.json").substr(0, 7), "{\n\t\"\":\t");
}

TEST(PackLogicalIO, DeepNestingDoesNotParse) {
  const test::ScratchFolder folder;
  convertVelmoraToPacked("", "", std::string(200000, '['), folder.path());
  EXPECT_TRUE(std::filesystem::exists(folder.path("Ports.json")));
}

TEST(PackLogicalIO, RunningOutOfMemoryWritesNoFile) {
  std::size_t allowed = 0;
  for (bool packed = false; !packed; ++allowed) {
    const LogicalIOFolder folder(kDevices, kPortLabels);
    try {
      const test::FailingMemory exhausted(allowed);
      folder.pack(kSources);
      packed = true;
    } catch (const std::bad_alloc&) {
      EXPECT_FALSE(folder.has("logicalSourcesPorts.json")) << allowed;
      EXPECT_FALSE(folder.has("Ports.json")) << allowed;
    }
  }
  // The legacy text, the four documents and the last round.
  EXPECT_GE(allowed, 6U);
}

// Stages

TEST(PackLogicalIO, ReportsItsStages) {
  const LogicalIOFolder folder(kDevices, kPortLabels);
  EXPECT_EQ(test::stagesOf([&] { folder.pack(kSources); }),
            "parsed JSON\n"
            "    Loaded device labels\n"
            "    Loaded port labels\n"
            "created Dictionary\n"
            "replaced device display names with ID\n"
            "Bit Packing\n"
            "Added Container Details\n"
            "Serialized JSON\n");
}

TEST(PackLogicalIO, ReportsTheStagesOfATextThatDoesNotParse) {
  const LogicalIOFolder folder;
  EXPECT_EQ(test::stagesOf([&] { folder.pack("x"); }),
            "parsed JSON\nBit Packing\nAdded Container Details\nSerialized JSON\n");
}

TEST(PackLogicalIO, IsSilentOtherwise) {
  const LogicalIOFolder folder(kDevices, kPortLabels);
  EXPECT_EQ(test::standardErrorOf([&] { folder.pack(kSources); }), "");
}

TEST(PackLogicalIO, PacksManyRecords) {
  constexpr int kRecords = 200000;
  std::string entries = R"({"name": "A", "id": 0, "val": []})";
  for (int id = 1; id < kRecords; ++id) {
    entries += R"(,{"name":"A","id":)" + std::to_string(id) + R"(,"val":["d.s.p[1].t.ch0"]})";
  }
  const LogicalIOFolder folder;
  folder.pack(sourcesOf(entries));
  const std::string labels = folder.bytesOf("logicalSourcesLabels.json");
  EXPECT_NE(labels.find("[199998, \"A\"], [199999, \"A\"]]"), std::string::npos);
}

}  // namespace
}  // namespace quenfold
