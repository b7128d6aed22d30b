#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "database/difference_writer.h"
#include "support/models.h"

namespace quenfold::database {
namespace {

using test::matricesModel;
using test::recordOf;
using test::sourcesModel;

const std::vector<Matrix> kMatrix = {{"F.audio", "1"}};

std::string textOf(const Model& from, const Model& to, bool all = false) {
  return differencesText(compare(from, to), all);
}

std::string jsonOf(const Model& from, const Model& to) {
  return std::string(quenfold::textOf(differencesJson(compare(from, to))));
}

/// Six ports, none next to another.
Model scattered() {
  return matricesModel({}, kMatrix,
                       {{"F.s.in[1].audio.ch1", "", 0},
                        {"F.s.in[3].audio.ch1", "", 0},
                        {"F.s.in[5].audio.ch1", "", 0},
                        {"F.s.in[7].audio.ch1", "", 0},
                        {"F.s.in[9].audio.ch1", "", 0},
                        {"F.s.in[11].audio.ch1", "", 0},
                        {"F.s.in[11].audio.ch2", "", 0}});
}

const Model kNoPorts = matricesModel({}, kMatrix, {});

TEST(DifferencesText, SaysThatNothingDiffers) { EXPECT_EQ(textOf({}, {}), "Nothing differs.\n"); }

TEST(DifferencesText, TellsKindsWithTheirPlaces) {
  const Model before =
      matricesModel({{"F", "1"}}, kMatrix,
                    {{"F.s.in[1].audio.ch1", "Vox", 0}, {"F.s.in[1].audio.ch2", "Kick", 0}});
  const Model after = matricesModel({{"F", "2"}}, {{"F.audio", "2"}},
                                    {{"F.s.in[1].audio.ch1", "", 0},
                                     {"F.s.in[1].audio.ch2", "Kick in", 0},
                                     {"F.s.in[2].audio.ch1", "", 0},
                                     {"F.s.in[2].audio.ch2", "", 0}});
  EXPECT_EQ(textOf(before, after),
            "device-serial-changed (1) in matrices.json: a device has another serial number\n"
            "    F: \"1\" -> \"2\"\n"
            "matrix-serial-changed (1) in matrices.json: a matrix has another serial number\n"
            "    F.audio: \"1\" -> \"2\"\n"
            "port-added (2) in matrices.json: a port was added\n"
            "    F.s.in[2].audio.ch1..2\n"
            "port-label-changed (2) in matrices.json: a port has another label\n"
            "    F.s.in[1].audio.ch1: \"Vox\" -> nothing\n"
            "    F.s.in[1].audio.ch2: \"Kick\" -> \"Kick in\"\n");
}

TEST(DifferencesText, TellsEachFileByItself) {
  Model before = sourcesModel({recordOf(1, "CAM", {"p"})});
  before.tables[kDestinations] = std::vector{recordOf(1, "Mon", {"", "p"})};
  Model after = sourcesModel({recordOf(1, "CAM", {"q"})});
  after.tables[kDestinations] = std::vector{recordOf(1, "Mon")};
  EXPECT_EQ(textOf(before, after),
            "record-port-changed (1) in sources.json: a record has another port in this position\n"
            "    sources.json 1 \"CAM\" port 1: \"p\" -> \"q\"\n"
            "record-port-changed (1) in destinations.json: a record has another port in this "
            "position\n"
            "    destinations.json 1 \"Mon\" port 2: \"p\" -> nothing\n");
}

TEST(DifferencesText, TellsTheFirstFivePlacesAndCountsPorts) {
  const std::string five =
      "    F.s.in[1].audio.ch1\n    F.s.in[3].audio.ch1\n    F.s.in[5].audio.ch1\n"
      "    F.s.in[7].audio.ch1\n    F.s.in[9].audio.ch1\n";
  EXPECT_EQ(textOf(scattered(), kNoPorts),
            "port-removed (7) in matrices.json: a port was removed\n" + five + "    and 2 more\n");
  EXPECT_EQ(textOf(scattered(), kNoPorts, true),
            "port-removed (7) in matrices.json: a port was removed\n" + five +
                "    F.s.in[11].audio.ch1..2\n");
}

TEST(DifferencesText, TellsFivePlacesOfEachFile) {
  std::vector<LogicalIORecord> six;
  for (std::int32_t id = 1; id <= 6; ++id) {
    six.push_back(recordOf(id, "r"));
  }
  Model after = sourcesModel(six);
  after.tables[kDestinations] = six;
  Model before = sourcesModel({});
  before.tables[kDestinations].emplace();
  const auto placesOf = [](const std::string& file) {
    return "record-added (6) in " + file + ": a record was added\n    " + file + " 1 \"r\"\n    " +
           file + " 2 \"r\"\n    " + file + " 3 \"r\"\n    " + file + " 4 \"r\"\n    " + file +
           " 5 \"r\"\n    and 1 more\n";
  };
  EXPECT_EQ(textOf(before, after), placesOf("sources.json") + placesOf("destinations.json"));
}

TEST(DifferencesText, SpellsControlCharacters) {
  EXPECT_EQ(textOf(matricesModel({{"\x1B[2J", ""}}, kMatrix, {{"F.s.in[1].audio.ch1", "a", 0}}),
                   matricesModel({}, kMatrix, {{"F.s.in[1].audio.ch1", "a\nb", 0}})),
            "device-removed (1) in matrices.json: a device was removed\n"
            "    \\x1B[2J\n"
            "port-label-changed (1) in matrices.json: a port has another label\n"
            "    F.s.in[1].audio.ch1: \"a\" -> \"a\\x0Ab\"\n");
}

TEST(DifferencesJson, IsAnEmptyListWhereNothingDiffers) {
  EXPECT_EQ(jsonOf({}, {}), "{\n    \"differences\": []\n}\n");
}

TEST(DifferencesJson, TellsEveryMember) {
  EXPECT_EQ(jsonOf(matricesModel({}, kMatrix, {{"F.s.in[1].audio.ch1", "a", 0}}),
                   matricesModel({}, kMatrix,
                                 {{"F.s.in[1].audio.ch1", "\"K\u00F6ln\"\x1B", 0},
                                  {"F.s.in[1].audio.ch2", "", 0},
                                  {"F.s.in[1].audio.ch3", "", 0}})),
            R"({
    "differences": [{
            "kind": "port-added",
            "file": "matrices.json",
            "place": "F.s.in[1].audio.ch2..3",
            "from": null,
            "to": null
        }, {
            "kind": "port-label-changed",
            "file": "matrices.json",
            "place": "F.s.in[1].audio.ch1",
            "from": "a",
            "to": "\"Köln\"\u001B"
        }]
}
)");
}

TEST(DifferencesJson, TellsEveryPlace) {
  const auto count = [](const std::string& json) {
    std::size_t places = 0;
    for (std::size_t at = json.find("\"place\""); at != std::string::npos;
         at = json.find("\"place\"", at + 1)) {
      ++places;
    }
    return places;
  };
  EXPECT_EQ(count(jsonOf(scattered(), kNoPorts)), 6U);
}

}  // namespace
}  // namespace quenfold::database
