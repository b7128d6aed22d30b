#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <tuple>

#include "json/cjson_handle.h"
#include "matrices/pack.h"
#include "support/logicalio_folder.h"
#include "support/plants.h"

namespace quenfold {
namespace {

using test::LogicalIOFolder;

constexpr const char* kDevices = R"({"deviceLabels": [
  {"id": "SN1", "label": "Stage", "serial": "SN1"},
  {"id": "SN2", "label": "FOH", "serial": "SN2"},
  {"id": "SN3", "label": "SN3", "serial": "SN3"}]})";

// The label "Choir" stands for two ports; the second one wins when packing.
constexpr const char* kPortLabels = R"({"portLabels": {
  "SN2.slot1.in[2].mic.ch0": "Vox", "SN1.slot0.in[4].mic.ch0": "Choir",
  "SN1.slot0.in[5].mic.ch0": "Choir", "SN1.slot0.out[1].line.ch2": "é"}})";

constexpr const char* kDestinations = R"({"LogicalDestinations": {"version": 10,
  "levelKeys": [1, 2, 3, 4], "LogicalDestination": [
    {"name": "Mon 1", "id": 3, "key": 9,
     "oid": ["Stage.slot0.in[4].mic.ch0", "", "Vox", "", ""],
     "description": "", "category": ["5", "Show", "-4", "7x"], "tally": "", "redirect": 1},
    {"name": "no ports", "id": 4, "oid": []},
    {"name": "Mon \"2\"", "id": -2, "oid": ["", "no port key", "é", "other.s.p[9].t.ch7"],
     "description": "left\n", "category": [], "tally": "T", "redirect": 77},
    {"name": "same id", "id": 3, "oid": ["SN3.slot4.in[0].mic.ch1"], "category": ["x"]}]}})";

constexpr std::array<const char*, 3> kPackedFiles = {"logicalDestinationsPorts.json",
                                                     "logicalDestinationsLabels.json",
                                                     "logicalDestinationsLegacyCategories.json"};

using PackedFiles = std::array<std::string, kPackedFiles.size()>;

PackedFiles packed(const LogicalIOFolder& folder, const std::string& legacy) {
  folder.pack(legacy);
  PackedFiles files;
  for (std::size_t i = 0; i < files.size(); ++i) {
    files.at(i) = folder.bytesOf(kPackedFiles.at(i));
  }
  return files;
}

TEST(LogicalIORoundTrip, TheSecondAndThirdPackedFilesAreEqual) {
  const LogicalIOFolder folder(kDevices, kPortLabels);
  const PackedFiles first = packed(folder, kDestinations);
  const std::string legacy = folder.unpack("logicalDestinations").first;
  const PackedFiles second = packed(folder, legacy);
  const std::string legacyAgain = folder.unpack("logicalDestinations").first;
  const PackedFiles third = packed(folder, legacyAgain);
  EXPECT_NE(first[0], second[0]);
  EXPECT_EQ(second, third);
}

TEST(LogicalIORoundTrip, RecordsComeBack) {
  const LogicalIOFolder folder(kDevices, R"({"portLabels": {"SN2.slot1.in[2].mic.ch0": "Vox"}})");
  folder.pack(R"({"LogicalDestinations": {"levelKeys": [1, 2], "LogicalDestination": [
      {"name": "Mon 1", "id": 3, "oid": ["Vox", "Stage.slot0.in[4].mic.ch0"], "redirect": 5,
       "description": "D", "category": ["5", "Show"], "tally": "T"},
      {"name": "Mon 2", "id": 4, "oid": ["", "FOH.slot1.in[2].mic.ch0"]}]}})");
  EXPECT_EQ(folder.unpack("logicalDestinations").first, R"({
	"LogicalDestinations":	{
		"version":	10,
		"LogicalDestination":	[{
				"name":	"Mon 1",
				"id":	3,
				"key":	0,
				"oid":	["Vox", "Stage.slot0.in[4].mic.ch0"],
				"description":	"D",
				"category":	["5", "Show", "", "", "", ""],
				"tally":	"T",
				"redirect":	5
			}, {
				"name":	"Mon 2",
				"id":	4,
				"key":	0,
				"oid":	["", "Vox"],
				"description":	"",
				"category":	["", "", "", "", "", ""],
				"tally":	"",
				"redirect":	1
			}]
	}
})");
}

/// A folder with the label files of a generated plant, and one of its tables.
struct GeneratedTable {
  GeneratedTable(std::uint32_t seed, bool messy, generator::Direction direction) {
    const generator::Plant plant = generator::plantOf(2000, seed, messy);
    // A messy plant brings warnings about its matrices.
    static_cast<void>(test::standardErrorOf([&] {
      convertMatricesToPacked("matrices.json", generator::matricesTextOf(plant), folder.path());
    }));
    legacy = generator::tableTextOf(plant, direction);
    stem = direction == generator::Direction::source ? "logicalSources" : "logicalDestinations";
  }

  [[nodiscard]] std::string packedTexts(const std::string& text) const {
    folder.pack(text);
    return folder.bytesOf(stem + "Ports.json") + folder.bytesOf(stem + "Labels.json") +
           folder.bytesOf(stem + "LegacyCategories.json");
  }

  LogicalIOFolder folder;
  std::string legacy;
  std::string stem;
};

/// The list of records in a legacy document.
const cJSON* recordsOf(const cJSON& document, bool sources) {
  return cJSON_GetObjectItem(document.child, sources ? "LogicalSource" : "LogicalDestination");
}

class GeneratedRoundTrip
    : public testing::TestWithParam<std::tuple<std::uint32_t, generator::Direction>> {};

TEST_P(GeneratedRoundTrip, RecordsComeBack) {
  const auto [seed, direction] = GetParam();
  const GeneratedTable table(seed, false, direction);
  table.folder.pack(table.legacy);
  const CJsonDocument before = parseCJson(table.legacy);
  const CJsonDocument after = parseCJson(table.folder.unpack(table.stem).first);
  const bool sources = direction == generator::Direction::source;
  ASSERT_GT(cJSON_GetArraySize(recordsOf(*before, sources)), 20);
  EXPECT_TRUE(cJSON_Compare(recordsOf(*before, sources), recordsOf(*after, sources), 1));
}

TEST_P(GeneratedRoundTrip, TheSecondAndThirdPackedFilesAreEqual) {
  const auto [seed, direction] = GetParam();
  for (const bool messy : {false, true}) {
    const GeneratedTable table(seed, messy, direction);
    static_cast<void>(table.packedTexts(table.legacy));
    const std::string second = table.packedTexts(table.folder.unpack(table.stem).first);
    const std::string third = table.packedTexts(table.folder.unpack(table.stem).first);
    EXPECT_EQ(second, third) << messy;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, GeneratedRoundTrip,
                         testing::Combine(testing::Values(1U, 2U, 3U, 4U, 5U),
                                          testing::Values(generator::Direction::source,
                                                          generator::Direction::destination)));

}  // namespace
}  // namespace quenfold
