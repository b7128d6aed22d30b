#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "json/access.h"
#include "matrices/legacy_matrices.h"

namespace quenfold::packing {
namespace {

struct Parsed {
  explicit Parsed(std::string json) : text(std::move(json)), file(parseLegacyMatrices(text)) {}
  std::string text;
  LegacyMatrices file;
};

TEST(LegacyMatrices, KeepsEachMatrixWithItsPortsInOrder) {
  const Parsed parsed(R"({"Config": {"version": 8, "Matrices": [
      {"id": 7, "name": "F1.a", "serialnumber": "S1", "type": 2,
       "ports": [{"port": "p1", "label": "l1"}, {"label": "l2", "port": "p2"}]},
      {"ports": [{"port": "p3"}]}]}})");
  ASSERT_EQ(parsed.file.list.size(), 2U);
  const LegacyMatrix& first = parsed.file.list[0];
  EXPECT_EQ(first.id.GetInt(), 7);
  EXPECT_EQ(jsonText(first.name), "F1.a");
  EXPECT_EQ(jsonText(first.serial), "S1");
  EXPECT_EQ(first.type.GetInt(), 2);
  EXPECT_EQ(first.portCount, 2U);
  EXPECT_EQ(parsed.file.list[1].portCount, 1U);
  EXPECT_TRUE(parsed.file.list[1].name.IsNull());
  ASSERT_EQ(parsed.file.ports.size(), 3U);
  EXPECT_EQ(jsonText(parsed.file.ports[1].port), "p2");
  EXPECT_EQ(jsonText(parsed.file.ports[1].label), "l2");
  EXPECT_EQ(jsonText(parsed.file.ports[2].port), "p3");
  EXPECT_TRUE(parsed.file.ports[2].label.IsNull());
}

TEST(LegacyMatrices, KeepsPortsInWhateverSpellingTheyFollowEachOther) {
  const Parsed parsed(
      R"({"Config":{"Matrices":[{"ports":[{"port":"p1","label":"l1"},{"port":"p2","label":"l2"},)"
      R"({"label":"l3","port":"p3"},{"port":"p4","label":"l\u0034"},{"port":"p5","label":"l5"}]},)"
      R"({"x":[{"port":"no","label":"no"},{"port":"no","label":"no"}],)"
      R"("ports":[{"port":"p6","label":"l6"},{"port":"p7","label":"l7"},1,)"
      R"({"port":"no","label":"no"},{"port":"no","label":"no"}]}]}})");
  ASSERT_EQ(parsed.file.list.size(), 2U);
  EXPECT_EQ(parsed.file.list[0].portCount, 5U);
  EXPECT_EQ(parsed.file.list[1].portCount, 2U);
  EXPECT_TRUE(parsed.file.list[1].portsEndEarly);
  ASSERT_EQ(parsed.file.ports.size(), 7U);
  for (std::size_t i = 0; i < 7; ++i) {
    EXPECT_EQ(jsonText(parsed.file.ports[i].port), "p" + std::to_string(i + 1));
    EXPECT_EQ(jsonText(parsed.file.ports[i].label), "l" + std::to_string(i + 1));
  }
}

TEST(LegacyMatrices, KeepsNothingOfPortsThatEndAmiss) {
  const std::string start = R"({"Config":{"Matrices":[{"ports":[{"port":"a","label":"b"},)"
                            R"({"port":"a","label":"b"})";
  EXPECT_EQ(Parsed(start + "]}]}}").file.ports.size(), 2U);
  for (const char* end : {"", "]}]}", ",]}]}}", ",", "}", R"(,{"port":"a","label":"b"},]}]}})"}) {
    EXPECT_TRUE(Parsed(start + end).file.root.IsNull()) << end;
  }
}

TEST(LegacyMatrices, KeepsTheFirstOfEachName) {
  const Parsed parsed(R"({
      "Config": {"Matrices": [{"id": 1, "id": 2, "ports": [{"port": "a", "port": "b"}],
                               "ports": [{"port": "c"}]}],
                 "Matrices": [{}, {}]},
      "Config": {"Matrices": [{}, {}, {}]}})");
  ASSERT_EQ(parsed.file.list.size(), 1U);
  EXPECT_EQ(parsed.file.list[0].id.GetInt(), 1);
  ASSERT_EQ(parsed.file.ports.size(), 1U);
  EXPECT_EQ(jsonText(parsed.file.ports[0].port), "a");
}

TEST(LegacyMatrices, AFirstOfTheWrongKindHidesTheNext) {
  EXPECT_TRUE(Parsed(R"({"Config": 1, "Config": {"Matrices": []}})").file.matrices.IsNull());
  EXPECT_TRUE(Parsed(R"({"Config": [{"Matrices": []}]})").file.matrices.IsNull());
  const Parsed parsed(R"({"Config": {"Matrices": [{"ports": null, "ports": [{}]}]}})");
  EXPECT_FALSE(parsed.file.list[0].ports.IsNull());
  EXPECT_FALSE(parsed.file.list[0].ports.IsArray());
  EXPECT_TRUE(parsed.file.ports.empty());
}

TEST(LegacyMatrices, SkipsWhatHasTheSameNameElsewhere) {
  const Parsed parsed(R"({"x": {"Config": {"Matrices": [{}]}}, "Matrices": [{}],
      "Config": {"Config": {"Matrices": [{}]}, "ports": [{}],
                 "Matrices": [{"port": "no", "x": {"name": "no", "ports": [{}]}, "name": "yes",
                               "ports": [{"x": [{"port": "no"}], "port": "yes"}]}]}})");
  ASSERT_EQ(parsed.file.list.size(), 1U);
  EXPECT_EQ(jsonText(parsed.file.list[0].name), "yes");
  ASSERT_EQ(parsed.file.ports.size(), 1U);
  EXPECT_EQ(jsonText(parsed.file.ports[0].port), "yes");
}

TEST(LegacyMatrices, TakesNothingOutOfAPortsMembers) {
  const Parsed parsed(R"({"Config": {"Matrices": [{"ports": [
      {"port": {"port": "no", "label": "no"}, "label": [{"port": "no"}]}, {"port": "yes"}]}]}})");
  ASSERT_EQ(parsed.file.ports.size(), 2U);
  EXPECT_TRUE(parsed.file.ports[0].port.IsObject());
  EXPECT_TRUE(parsed.file.ports[0].label.IsArray());
  EXPECT_EQ(jsonText(parsed.file.ports[1].port), "yes");
}

TEST(LegacyMatrices, TakesAMatrixSpelledLikeAPortForAMatrix) {
  const Parsed parsed(
      R"({"Config":{"Matrices":[{"ports":[]},{"port":"p","label":"l"},{"id":1}]}})");
  ASSERT_EQ(parsed.file.list.size(), 3U);
  EXPECT_EQ(parsed.file.list[2].id.GetInt(), 1);
  EXPECT_TRUE(parsed.file.ports.empty());
}

TEST(LegacyMatrices, TellsNullFromNotThere) {
  const Parsed parsed(R"({"Config": {"Matrices": [{"name": null, "ports": [{"port": null}]}]}})");
  EXPECT_FALSE(parsed.file.list[0].name.IsNull());
  EXPECT_FALSE(parsed.file.list[0].name.IsString());
  EXPECT_FALSE(parsed.file.ports[0].port.IsNull());
  EXPECT_FALSE(Parsed(R"({"Config": null})").file.config.IsNull());
}

TEST(LegacyMatrices, EndsAListAtAnElementThatIsNoObject) {
  for (const char* other : {"1", "null", "true", "\"s\"", "[]", "[{}]"}) {
    const std::string list = std::string("[{}, ") + other + ", {}, 2]";
    const Parsed matrices(R"({"Config": {"Matrices": )" + list + "}}");
    ASSERT_EQ(matrices.file.list.size(), 2U) << other;
    EXPECT_TRUE(matrices.file.list[0].isObject);
    EXPECT_FALSE(matrices.file.list[1].isObject);
    const Parsed ports(R"({"Config": {"Matrices": [{"ports": )" + list + R"(, "id": 3}, {}]}})");
    ASSERT_EQ(ports.file.list.size(), 2U) << other;
    EXPECT_EQ(ports.file.list[0].portCount, 1U);
    EXPECT_TRUE(ports.file.list[0].portsEndEarly);
    EXPECT_EQ(ports.file.list[0].id.GetInt(), 3);
    EXPECT_FALSE(ports.file.list[1].portsEndEarly);
  }
}

TEST(LegacyMatrices, KeepsNothingOfATextThatIsNotJson) {
  const Parsed parsed(R"({"Config": {"Matrices": [{"ports": [{}]}]}} x)");
  EXPECT_TRUE(parsed.file.root.IsNull());
  EXPECT_TRUE(parsed.file.config.IsNull());
  EXPECT_TRUE(parsed.file.list.empty());
  EXPECT_TRUE(parsed.file.ports.empty());
}

TEST(LegacyMatrices, KnowsTheRootsKind) {
  EXPECT_TRUE(Parsed("{}").file.root.IsObject());
  EXPECT_TRUE(Parsed("[{}]").file.root.IsArray());
  EXPECT_TRUE(Parsed("\"Config\"").file.root.IsString());
}

}  // namespace
}  // namespace quenfold::packing
