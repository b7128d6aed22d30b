#include <gtest/gtest.h>

#include "app/stage_timer.h"
#include "matrices/packed_writer.h"
#include "support/scratch.h"

namespace quenfold::packing {
namespace {

std::string sectionOf(const MatricesModel& model, std::string_view name) {
  const Sections sections = buildSections(model);
  EXPECT_EQ(sections.size(), 4U);
  return std::string(textOf(sections.at(name)));
}

PackSlot& addSlot(MatricesModel& model) {
  return model.devices.append(PackDevice{"F1", {}}).slots.append(PackSlot{"s1", {}, {}});
}

TEST(BuildSections, WritesEmptySections) {
  const MatricesModel empty;
  EXPECT_EQ(sectionOf(empty, "deviceLabels"), "{\n    \"deviceLabels\": []\n}");
  EXPECT_EQ(sectionOf(empty, "matrices"), "{\n    \"matrices\": {}\n}");
  EXPECT_EQ(sectionOf(empty, "matricesInternalDetails"),
            "{\n    \"matricesInternalDetails\": []\n}");
  EXPECT_EQ(sectionOf(empty, "portLabels"), "{\n    \"portLabels\": {}\n}");
}

TEST(BuildSections, WritesTheTreeWithArraysOnOneLine) {
  MatricesModel model;
  PackSlot& slot = addSlot(model);
  Layout layout;
  TypeChannels& audio = layout.append(TypeChannels{"audio", {}});
  audio.channels.append(2);
  audio.channels.append(7);
  audio.channels.append(1);
  layout.append(TypeChannels{"video", {}}).channels.append(3);
  layout.append(TypeChannels{"none", {}});
  slot.groups.push_back({"in[]", 1, 8, &layout, Direction::kSource});
  slot.groups.push_back({"out[]", 4, 4, &layout, Direction::kDestination});
  slot.groups.push_back({"x\"[]", 9, 3, &layout, Direction::kUnknown});
  EXPECT_EQ(
      sectionOf(model, "matrices"),
      "{\n"
      "    \"matrices\": {\n"
      "        \"F1\": {\n"
      "            \"s1\": [{\n"
      "                    \"port\": [\"in[]\", [1, 8], \"s\"],\n"
      "                    \"types\": [[\"audio\", [1, 7]], [\"video\", [3]], [\"none\", []]]\n"
      "                }, {\n"
      "                    \"port\": [\"out[]\", [4], \"d\"],\n"
      "                    \"types\": [[\"audio\", [1, 7]], [\"video\", [3]], [\"none\", []]]\n"
      "                }, {\n"
      "                    \"port\": [\"x\\\"[]\", [9, 3], \"?\"],\n"
      "                    \"types\": [[\"audio\", [1, 7]], [\"video\", [3]], [\"none\", []]]\n"
      "                }]\n"
      "        }\n"
      "    }\n"
      "}");
}

TEST(BuildSections, WritesASlotWithoutPorts) {
  MatricesModel model;
  addSlot(model);
  model.devices.append(PackDevice{"F2", {}});
  EXPECT_EQ(sectionOf(model, "matrices"),
            "{\n"
            "    \"matrices\": {\n"
            "        \"F1\": {\n"
            "            \"s1\": []\n"
            "        },\n"
            "        \"F2\": {}\n"
            "    }\n"
            "}");
}

TEST(BuildSections, WritesLabelsAndDetailsInOrder) {
  MatricesModel model;
  model.deviceLabels.append({"Zo\xc3\xab", "S1"});
  model.details.push_back({"Zo\xc3\xab.audio", -4, 2});
  model.portLabels.push_back({"S1", ".a", "b\\\n\x01"});
  model.portLabels.push_back({"S1", ".a", "again"});
  EXPECT_EQ(sectionOf(model, "deviceLabels"),
            "{\n"
            "    \"deviceLabels\": [{\n"
            "            \"id\": \"S1\",\n"
            "            \"label\": \"Zo\xc3\xab\",\n"
            "            \"serial\": \"S1\"\n"
            "        }]\n"
            "}");
  EXPECT_EQ(sectionOf(model, "matricesInternalDetails"),
            "{\n"
            "    \"matricesInternalDetails\": [{\n"
            "            \"name\": \"Zo\xc3\xab.audio\",\n"
            "            \"id\": -4,\n"
            "            \"type\": 2\n"
            "        }]\n"
            "}");
  EXPECT_EQ(sectionOf(model, "portLabels"),
            "{\n"
            "    \"portLabels\": {\n"
            "        \"S1.a\": \"b\\\\\\n\\u0001\",\n"
            "        \"S1.a\": \"again\"\n"
            "    }\n"
            "}");
}

}  // namespace
}  // namespace quenfold::packing
