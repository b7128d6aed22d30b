#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <vector>

#include "json/cjson_tree.h"
#include "logicalio/packed_reader.h"
#include "support/failing_memory.h"
#include "support/logicalio_folder.h"

namespace quenfold {
namespace {

using test::kDevices;
using test::kPortLabels;
using test::LogicalIOFolder;

constexpr const char* kPorts = R"({"logicalSources": {"version": 10, "portDict": {"version": 2,
  "refMaps": {"device": [[0, "SN1"], [1, "SN2"]], "slot": [[0, "slot0"], [1, "slot1"]],
              "port_prefix": [[0, "in"]], "type": [[0, "mic"]]},
  "bitPacking": "${device,1}.${slot,1}.${port_prefix,0}[#{port_id,2}].${type,0}.ch#{ch,1}"},
  "levelKeys": [1, 2, 3], "hash": {"name": 5},
  "logicalIO": [{"id": 7, "tally": "T1", "port": [3, "", 28]},
                {"id": -1, "redirect": 4, "description": "left", "port": ["", 26, ""]}]}})";

constexpr const char* kLabels =
    R"({"logicalSourcesLabels": {"labels": [[7, "Cam 1"], [-1, "é"]]}})";

constexpr const char* kCategories =
    R"({"logicalSourcesLegacyCategories": {"legacyCategories": [[7, [5, "Show"]]]}})";

/// A folder with the three packed files of the stem "s".
class PackedFolder : public LogicalIOFolder {
 public:
  explicit PackedFolder(std::string_view ports, std::string_view labels = kLabels,
                        std::string_view categories = kCategories)
      : LogicalIOFolder(kDevices, kPortLabels) {
    static_cast<void>(file("sPorts.json", ports));
    static_cast<void>(file("sLabels.json", labels));
    static_cast<void>(file("sLegacyCategories.json", categories));
  }
};

constexpr const char* kDict = R"("portDict": {"version": 2, "refMaps": {"device": [[0, "d"]],
  "slot": [[0, "s"]], "port_prefix": [[0, "p"]], "type": [[0, "t"]]},
  "bitPacking": "#{port_id,8}#{ch,2}"})";

/// A packed sources table with these entries, two level keys and ports "d.s.p[<n>].t.ch<m>".
std::string tableOf(const std::string& entries) {
  return R"({"logicalSources": {"version": 10, "hash": {}, "levelKeys": [1, 2], )" +
         std::string(kDict) + R"(, "logicalIO": [)" + entries + "]}}";
}

/// The legacy entries, without blanks between the tokens.
std::string entriesOf(const std::string& ports, std::string_view labels = kLabels,
                      std::string_view categories = kCategories) {
  const PackedFolder folder(ports, labels, categories);
  const CJsonDocument document = parseCJson(folder.unpack("s").first);
  const std::unique_ptr<char, void (*)(void*)> text(
      cJSON_PrintUnformatted(document->child->child->next), cJSON_free);
  return text.get();
}

/// A legacy member of the only entry.
std::string memberOf(const std::string& entry, const char* name,
                     std::string_view categories = kCategories) {
  const PackedFolder folder(tableOf(entry), kLabels, categories);
  const CJsonDocument document = parseCJson(folder.unpack("s").first);
  const cJSON* const legacy = document->child->child->next->child;
  const std::unique_ptr<char, void (*)(void*)> text(
      cJSON_PrintUnformatted(cJSON_GetObjectItem(legacy, name)), cJSON_free);
  return text.get();
}

std::string unpackMessage(const std::string& ports) {
  const PackedFolder folder(ports);
  return test::messageOf([&] { folder.unpack("s"); });
}

TEST(UnpackLogicalIO, RebuildsTheLegacyDocument) {
  EXPECT_EQ(PackedFolder(kPorts).unpack("s").first, R"({
	"LogicalSources":	{
		"version":	10,
		"LogicalSource":	[{
				"name":	"Cam 1",
				"id":	7,
				"key":	0,
				"val":	["Stage.slot0.in[1].mic.ch1", "", "Vox"],
				"description":	"",
				"category":	["5", "Show", "", "", "", ""],
				"tally":	"T1",
				"redirect":	1
			}, {
				"name":	"é",
				"id":	-1,
				"key":	0,
				"val":	["", "FOH.slot1.in[1].mic.ch0", ""],
				"description":	"left",
				"category":	["", "", "", "", "", ""],
				"tally":	"",
				"redirect":	4
			}]
	}
})");
}

TEST(UnpackLogicalIO, FingerprintsTheRebuiltRecords) {
  EXPECT_EQ(PackedFolder(kPorts).unpack("s").second, R"({
	"LogicalSources":	{
		"hash":	{
			"category":	1740965305,
			"description":	2158103027,
			"id":	2525627808,
			"name":	1563114135,
			"port":	3764708726,
			"redirect":	4055879026,
			"tally":	3023430481
		}
	}
})");
}

TEST(UnpackLogicalIO, FingerprintsOfAnEmptyTableAre0) {
  EXPECT_EQ(PackedFolder(tableOf("")).unpack("s").second, R"({
	"LogicalSources":	{
		"hash":	{
			"category":	0,
			"description":	0,
			"id":	0,
			"name":	0,
			"port":	0,
			"redirect":	0,
			"tally":	0
		}
	}
})");
}

TEST(UnpackLogicalIO, AnEmptyDirectoryMeansTheCurrentOne) {
  const PackedFolder folder(kPorts);
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  const auto texts = convertPackedToVelmora("s", "");
  std::filesystem::current_path(before);
  EXPECT_EQ(texts, folder.unpack("s"));
}

// Documents

TEST(UnpackLogicalIO, TriesDestinationsFirst) {
  const std::string legacy =
      PackedFolder(R"({"logicalSources": 5, "LOGICALDESTINATIONS": {"VERSION": 1, "Hash": 1, )" +
                   std::string(kDict) + R"(, "LogicalIO": [{"id": 7, "port": [5]}]}})")
          .unpack("s")
          .first;
  EXPECT_EQ(legacy.substr(0, 27), "{\n\t\"LogicalDestinations\":\t{");
  EXPECT_NE(legacy.find("\"LogicalDestination\":\t[{"), std::string::npos);
  EXPECT_NE(legacy.find("\"oid\":\t[\"d.s.p[1].t.ch1\"]"), std::string::npos);
}

TEST(UnpackLogicalIO, ReportsEachFaultOfTheDocument) {
  EXPECT_EQ(unpackMessage("{}"), "Unknown logical IO Type");
  EXPECT_EQ(unpackMessage("5"), "Unknown logical IO Type");
  EXPECT_EQ(unpackMessage(R"({"logicalDests": {}})"), "Unknown logical IO Type");
  const auto tableMessage = [](const std::string& table) {
    return unpackMessage(R"({"logicalSources": )" + table + "}");
  };
  EXPECT_EQ(tableMessage("5"), "Error \"version\" not found.");
  EXPECT_EQ(tableMessage("{}"), "Error \"version\" not found.");
  EXPECT_EQ(tableMessage(R"({"version": 10})"), "Error \"hash\" not found.");
  EXPECT_EQ(tableMessage(R"({"version": 10, "hash": [1]})"), "Error \"logicalIO\" not found.");
  EXPECT_EQ(tableMessage(R"({"version": 10, "hash": 1, "logicalIO": []})"),
            "Error \"portDict\" not found.");
  EXPECT_EQ(tableMessage(R"({"version": null, "hash": 1, "logicalIO": 1, "portDict": {}})"),
            "Invalid argument");
  EXPECT_EQ(
      tableMessage(R"({"version": 1, "hash": 1, "logicalIO": 1, "portDict": {"version": 2}})"),
      "Invalid argument");
}

TEST(UnpackLogicalIO, ParseErrorsShowTwelveBytes) {
  EXPECT_EQ(unpackMessage("nonsense that is long"), "JSON Parse Error: nonsense tha\n");
  EXPECT_EQ(unpackMessage("{\"a\": 1} x"), "Unknown logical IO Type");
  EXPECT_EQ(unpackMessage("[1, xyz]"), "JSON Parse Error: xyz]\n");
  EXPECT_EQ(unpackMessage(""), "JSON Parse Error: \n");
  EXPECT_EQ(unpackMessage("\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9"),
            "JSON Parse Error: \xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\n");
  EXPECT_EQ(unpackMessage(std::string(200000, '[')), "JSON Parse Error: [[[[[[[[[[[[\n");
}

TEST(UnpackLogicalIO, AMissingPortsFileEndsTheRun) {
  const LogicalIOFolder folder;
  EXPECT_EQ(test::messageOf([&] { folder.unpack("s"); }),
            "error while opening file: " + folder.path("sPorts.json"));
}

TEST(UnpackLogicalIO, TheTableIsCheckedBeforeTheLabelFiles) {
  const test::ScratchFolder folder;
  static_cast<void>(folder.file("sPorts.json", "{}"));
  EXPECT_EQ(test::messageOf([&] { convertPackedToVelmora("s", folder.path()); }),
            "Unknown logical IO Type");
  static_cast<void>(folder.file("sPorts.json", tableOf("")));
  EXPECT_EQ(test::messageOf([&] { convertPackedToVelmora("s", folder.path()); }),
            "error while opening file: " + folder.path("dbpack_deviceLabels.json"));
}

TEST(UnpackLogicalIO, StoredHashesAreNotCompared) {
  for (const char* hash : {"null", "[1]", R"({"name": "x"})", R"({"name": -1})"}) {
    const std::string table = R"({"logicalSources": {"version": 10, "hash": )" + std::string(hash) +
                              ", " + kDict + R"(, "logicalIO": []}})";
    EXPECT_EQ(entriesOf(table), "[]") << hash;
  }
}

TEST(ParsePackedLogicalIOTable, WantsTheTable) {
  const PackedContext context;
  const CJsonDocument table = parseCJson(R"({"x": 1})");
  const char* const message = "parsePackedLogicalIOTable: logical IO table not found";
  EXPECT_EQ(test::messageOf([&] { parsePackedLogicalIOTable(table.get(), context); }), message);
  EXPECT_EQ(test::messageOf([&] { parsePackedLogicalIOTable(nullptr, context); }), message);
}

// Entries

TEST(UnpackLogicalIO, AnEntryNeedsAnId) {
  for (const char* entry : {"{}", "5", "[1]", "null", R"({"name": "A"})"}) {
    EXPECT_EQ(unpackMessage(tableOf(entry)), "id not found") << entry;
  }
}

TEST(UnpackLogicalIO, EntriesThatAreNoListAreNone) {
  EXPECT_EQ(entriesOf(R"({"logicalSources": {"version": 10, "hash": {}, "logicalIO": 5, )" +
                      std::string(kDict) + "}}"),
            "[]");
}

TEST(UnpackLogicalIO, MembersOfAnEntryIgnoreCase) {
  EXPECT_EQ(entriesOf(tableOf(R"({"ID": 3, "Name": "N", "TALLY": "T", "Redirect": 2,
                                  "Description": "D", "Category": ["c"], "PORT": [5]})")),
            R"([{"name":"N","id":3,"key":0,"val":["d.s.p[1].t.ch1",""],"description":"D",)"
            R"("category":["c","","","","",""],"tally":"T","redirect":2}])");
}

TEST(UnpackLogicalIO, DefaultsFillAnEntry) {
  EXPECT_EQ(entriesOf(tableOf(R"({"id": 3, "name": "", "tally": 5, "description": null})")),
            R"([{"name":"","id":3,"key":0,"val":["",""],"description":"",)"
            R"("category":["","","","","",""],"tally":"","redirect":1}])");
}

TEST(UnpackLogicalIO, RedirectTakesTheIntegerOfAnyValue) {
  EXPECT_EQ(memberOf(R"({"id": 7, "redirect": "5"})", "redirect"), "0");
  EXPECT_EQ(memberOf(R"({"id": 7, "redirect": true})", "redirect"), "1");
  EXPECT_EQ(memberOf(R"({"id": 7, "redirect": -1e20})", "redirect"), "-2147483648");
  EXPECT_EQ(memberOf(R"({"id": true, "name": "A"})", "id"), "1");
  EXPECT_EQ(memberOf(R"({"id": "7", "name": "A"})", "id"), "0");
}

TEST(UnpackLogicalIO, NamesComeFromTheLabelsFirst) {
  EXPECT_EQ(memberOf(R"({"id": 7, "name": "own"})", "name"), "\"Cam 1\"");
  EXPECT_EQ(memberOf(R"({"id": 8, "name": "own"})", "name"), "\"own\"");
  EXPECT_EQ(memberOf(R"({"id": -1})", "name"), "\"\xc3\xa9\"");
}

TEST(UnpackLogicalIO, AnIdWithoutANameIsNoticed) {
  const PackedFolder folder(tableOf(R"({"id": 3}, {"id": -1}, {"id": -2, "name": 5})"));
  std::string legacy;
  EXPECT_EQ(test::standardErrorOf([&] { legacy = folder.unpack("s").first; }),
            "Error loading label for id:3. Using default.\n"
            "Error loading label for id:-2. Using default.\n");
  EXPECT_NE(legacy.find("\"name\":\t\"lbl_3\""), std::string::npos);
  EXPECT_NE(legacy.find("\"name\":\t\"lbl_-2\""), std::string::npos);
}

TEST(UnpackLogicalIO, Id7WithoutANameIsLbl7) {
  const PackedFolder folder(tableOf(R"({"id": 7})"), R"({"x": {"labels": []}})");
  std::string legacy;
  EXPECT_EQ(test::standardErrorOf([&] { legacy = folder.unpack("s").first; }),
            "Error loading label for id:7. Using default.\n");
  EXPECT_NE(legacy.find("\"name\":\t\"lbl_7\""), std::string::npos);
}

TEST(UnpackLogicalIO, CategoriesComeFromTheirFileFirst) {
  const char* const entry = R"({"id": 7, "category": ["own", "9", "", "lost"]})";
  EXPECT_EQ(memberOf(entry, "category"), R"(["5","Show","","","",""])");
  EXPECT_EQ(memberOf(entry, "category", R"({"x": {"legacyCategories": [[7, []]]}})"),
            R"(["","","","","",""])");
  EXPECT_EQ(memberOf(entry, "category", R"({"x": {"legacyCategories": []}})"),
            R"(["own","9","","","",""])");
}

TEST(UnpackLogicalIO, CategoriesBeyondSixAreDropped) {
  EXPECT_EQ(memberOf(R"({"id": 8, "name": "A", "category": [1, 2, 3, 4, 5, -6, 7]})", "category"),
            R"(["1","2","3","4","5","-6"])");
}

TEST(UnpackLogicalIO, ACategoryMayBeALongText) {
  const std::string text(100, 'c');
  EXPECT_EQ(memberOf(R"({"id": 8, "name": "A", "category": [")" + text + "\"]}", "category"),
            "[\"" + text + R"(","","","","",""])");
}

TEST(UnpackLogicalIO, PadsThePortsToTheLevelKeys) {
  EXPECT_EQ(memberOf(R"({"id": 7, "port": [5]})", "val"), R"(["d.s.p[1].t.ch1",""])");
  EXPECT_EQ(memberOf(R"({"id": 7, "port": []})", "val"), R"(["",""])");
  EXPECT_EQ(memberOf(R"({"id": 7, "port": [0, 1, 2]})", "val"),
            R"(["d.s.p[0].t.ch0","d.s.p[0].t.ch1","d.s.p[0].t.ch2"])");
  EXPECT_EQ(entriesOf(R"({"logicalSources": {"version": 10, "hash": {}, "levelKeys": [1, 2, 3], )" +
                      std::string(kDict) + R"(, "logicalIO": [{"id": 7, "port": [5]}]}})"),
            R"([{"name":"Cam 1","id":7,"key":0,"val":["d.s.p[1].t.ch1","",""],"description":"",)"
            R"("category":["5","Show","","","",""],"tally":"","redirect":1}])");
}

TEST(UnpackLogicalIO, WhatIsNoNumberIsAGap) {
  EXPECT_EQ(memberOf(R"({"id": 7, "port": ["", null, 5, "5", 0, "", true]})", "val"),
            R"(["","","d.s.p[1].t.ch1","","d.s.p[0].t.ch0"])");
  EXPECT_EQ(memberOf(R"({"id": 7, "port": ["", "", ""]})", "val"), R"(["",""])");
  EXPECT_EQ(memberOf(R"({"id": 7, "port": 5})", "val"), R"(["",""])");
}

TEST(UnpackLogicalIO, PackedPortsSaturate) {
  const auto portHash = [](const char* port) {
    const PackedFolder folder(tableOf(R"({"id": 7, "port": [)" + std::string(port) + "]}"));
    const CJsonDocument document = parseCJson(folder.unpack("s").second);
    return cJSON_GetObjectItem(document->child->child, "port")->valuedouble;
  };
  EXPECT_EQ(memberOf(R"({"id": 7, "port": [-5, 1e300, 5.9]})", "val"),
            R"(["d.s.p[0].t.ch0","d.s.p[255].t.ch3","d.s.p[1].t.ch1"])");
  EXPECT_EQ(portHash("-5"), 194091779.0);
  EXPECT_EQ(portHash("0"), 194091779.0);
  EXPECT_EQ(portHash("1e300"), portHash("18446744073709551616"));
}

TEST(UnpackLogicalIO, TheUpperHalfOfAPortTakesPart) {
  const std::string table =
      R"({"logicalSources": {"version": 10, "hash": {}, "portDict": {"version": 2, "refMaps": {},
          "bitPacking": "#{port_id,24}#{ch,8}"}, "logicalIO": [{"id": 7, "port": [4294968579]}]}})";
  const PackedFolder folder(table);
  EXPECT_NE(folder.unpack("s").first.find("[\".slot0.[16777221]..ch3\"]"), std::string::npos);
}

// Files and stages

TEST(UnpackLogicalIO, WithoutSideFilesTheTableStandsForItself) {
  const LogicalIOFolder folder;
  static_cast<void>(
      folder.file("sPorts.json", tableOf(R"({"id": 7, "name": "own", "category": ["c"]})")));
  std::string legacy;
  EXPECT_EQ(test::standardErrorOf([&] { legacy = folder.unpack("s").first; }),
            "Error parsing Label map: error while opening file: " + folder.path("sLabels.json") +
                " - Assuming monolithic file.\n"
                "Error parsing Legacy Category map: error while opening file: " +
                folder.path("sLegacyCategories.json") + " - Assuming monolithic file.\n");
  EXPECT_NE(legacy.find("\"name\":\t\"own\""), std::string::npos);
  EXPECT_NE(legacy.find("\"category\":\t[\"c\", \"\""), std::string::npos);
}

TEST(UnpackLogicalIO, ReportsItsStages) {
  const PackedFolder folder(kPorts, "x");
  EXPECT_EQ(test::stagesOf([&] { folder.unpack("s"); }),
            "parsed JSON\n"
            "loaded Port Dictionary from JSON\n"
            "    Loaded device labels\n"
            "    Loaded port labels\n"
            "Error parsing Label map: JSON parse error - Assuming monolithic file.\n"
            "Error loading label for id:7. Using default.\n"
            "Error loading label for id:-1. Using default.\n"
            "parsed packed Logical IO Table\n"
            "created Hashes\n"
            "Created velmora JSON object\n"
            "Added Container Details\n"
            "Serialized JSON\n");
}

TEST(UnpackLogicalIO, IsSilentOtherwise) {
  const PackedFolder folder(kPorts);
  EXPECT_EQ(test::standardErrorOf([&] { folder.unpack("s"); }), "");
}

TEST(UnpackLogicalIO, RunningOutOfMemoryIsNoParseError) {
  const PackedFolder folder(kPorts);
  std::size_t allowed = 0;
  for (bool unpacked = false; !unpacked; ++allowed) {
    const test::FailingMemory exhausted(allowed);
    EXPECT_EQ(test::standardErrorOf([&] {
                try {
                  folder.unpack("s");
                  unpacked = true;
                } catch (const std::bad_alloc&) {
                  EXPECT_TRUE(exhausted.hasFailed());
                }
              }),
              "");
  }
  // The three packed texts, the two documents and the last round.
  EXPECT_GE(allowed, 6U);
}

TEST(UnpackLogicalIO, UnpacksManyRecords) {
  constexpr int kRecords = 200000;
  std::string entries = R"({"id": 0, "name": "A"})";
  for (int id = 1; id < kRecords; ++id) {
    entries += R"(,{"id":)" + std::to_string(id) + R"(,"name":"A","port":[5]})";
  }
  const PackedFolder folder(tableOf(entries));
  const std::string legacy = folder.unpack("s").first;
  EXPECT_NE(legacy.find("\"id\":\t199999,"), std::string::npos);
}

}  // namespace
}  // namespace quenfold
