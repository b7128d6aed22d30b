#include <gtest/gtest.h>

#include <filesystem>

#include "app/stage_timer.h"
#include "matrices/pack.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

constexpr const char* kOnePort =
    R"({"Config":{"Matrices":[{"name":"F1.a","serialnumber":"S1","id":1,"ports":[)"
    R"({"port":"F1.s.in[1].t.ch1","label":"Vox"},{"port":"F2.s.in[1].t.ch1","label":"F2.s.in[1].t.ch1"}]}]}})";

std::vector<std::string> labelsOf(const std::string& stages) {
  std::vector<std::string> labels;
  std::size_t begin = 0;
  for (std::size_t end = 0; (end = stages.find('\n', begin)) != std::string::npos;
       begin = end + 1) {
    const std::string line = stages.substr(begin, end - begin);
    labels.push_back(line.substr(0, line.rfind(": ")));
  }
  return labels;
}

TEST(ConvertMatricesToPacked, ReturnsTheBytesOfItsFourFiles) {
  const test::ScratchFolder scratch;
  const std::uint32_t total = convertMatricesToPacked("none.json", "ignored", scratch.path());
  EXPECT_EQ(scratch.bytesOf("dbpack_deviceLabels.json"), "{\n    \"deviceLabels\": []\n}");
  EXPECT_EQ(scratch.bytesOf("dbpack_matrices.json"), "{\n    \"matrices\": {}\n}");
  EXPECT_EQ(scratch.bytesOf("dbpack_matricesInternalDetails.json"),
            "{\n    \"matricesInternalDetails\": []\n}");
  EXPECT_EQ(scratch.bytesOf("dbpack_portLabels.json"), "{\n    \"portLabels\": {}\n}");
  EXPECT_EQ(total, 26U + 22U + 37U + 24U);
}

TEST(ConvertMatricesToPacked, NamesDevicesByFrameIdOrLeavesThem) {
  const test::ScratchFolder scratch;
  convertMatricesToPacked("matrices.json", kOnePort, scratch.path());
  const std::string tree = scratch.bytesOf("dbpack_matrices.json");
  EXPECT_NE(tree.find("\"S1\": {"), std::string::npos);
  EXPECT_NE(tree.find("\"F2\": {"), std::string::npos);
  EXPECT_EQ(tree.find("\"F1\": {"), std::string::npos);
}

TEST(ConvertMatricesToPacked, WritesNothingForPortLabels) {
  const test::ScratchFolder scratch;
  EXPECT_EQ(
      test::messageOf([&] { convertMatricesToPacked("portLabels.json", "{}", scratch.path()); }),
      "portLabels not supported");
  EXPECT_TRUE(std::filesystem::is_empty(scratch.path()));
}

TEST(ConvertMatricesToPacked, ReportsItsStagesInOrder) {
  const test::ScratchFolder scratch;
  verbose = true;
  const std::string stages = test::standardErrorOf(
      [&] { convertMatricesToPacked("matrices.json", kOnePort, scratch.path()); });
  verbose = false;
  EXPECT_EQ(labelsOf(stages),
            (std::vector<std::string>{"Parsed JSON", "decoding matrices.json",
                                      "Created tree structure", "Consolidated port entries",
                                      "Replaced user device labels with unique frame ID",
                                      "  Created Devices Tree JSON", "  Created deviceLabels JSON",
                                      "  Created matricesInternalDetails JSON",
                                      "  Created portLabels JSON", "serialized JSON"}));
}

}  // namespace
}  // namespace quenfold
