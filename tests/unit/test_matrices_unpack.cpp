#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "matrices/unpack.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

/// A folder with the three packed files; `tree` is the value of "matrices".
class PackedFolder : public test::ScratchFolder {
 public:
  explicit PackedFolder(std::string_view tree) {
    static_cast<void>(file("dbpack_deviceLabels.json",
                           R"({"deviceLabels":[{"id":"S1","label":"F1","serial":"S1"}]})"));
    static_cast<void>(
        file("dbpack_portLabels.json", R"({"portLabels":{"S1.s.in[1].t.ch1":"Vox"}})"));
    static_cast<void>(file("dbpack_matrices.json", fmt::format(R"({{"matrices":{}}})", tree)));
  }
};

constexpr const char* kTreeOfOnePort =
    R"({"S1":{"s":[{"port":["in[]",[1],"s"],"types":[["t",[1]]]}]}})";

TEST(ConvertPackedMatrices, WritesWhatIsAskedFor) {
  const PackedFolder packed(kTreeOfOnePort);
  const std::string out = packed.path("out");
  const std::uint32_t total =
      convertPackedMatrices(packed.path(), {"userPortLabels.json", "other.json"}, out);
  const std::string expected = R"([{"port":"F1.s.in[1].t.ch1","label":"Vox"}])";
  EXPECT_EQ(packed.bytesOf("out/userPortLabels.json"), expected);
  EXPECT_EQ(total, expected.size());
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(out), {}), 1);
}

TEST(ConvertPackedMatrices, CreatesTheDirectoryForItsOwnerAlone) {
  const PackedFolder packed("{}");
  const mode_t former = umask(0);
  EXPECT_EQ(convertPackedMatrices(packed.path(), {}, packed.path("out")), 0U);
  umask(former);
  struct stat status = {};
  ASSERT_EQ(stat(packed.path("out").c_str(), &status), 0);
  EXPECT_TRUE(S_ISDIR(status.st_mode));
  EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST(ConvertPackedMatrices, WritesIntoADirectoryDated2040) {
  const PackedFolder packed(kTreeOfOnePort);
  const std::string out = packed.path("out");
  std::filesystem::create_directory(out);
  test::date2040(out);
  EXPECT_GT(convertPackedMatrices(packed.path(), {"userPortLabels.json"}, out), 0U);
  EXPECT_NE(packed.bytesOf("out/userPortLabels.json"), "");
}

TEST(ConvertPackedMatrices, ReportsADirectoryThatCannotBeCreated) {
  const PackedFolder packed("{}");
  const std::string out = packed.path("no/out");
  EXPECT_EQ(test::messageOf([&] { convertPackedMatrices(packed.path(), {}, out); }),
            "mkdir(" + out + "): No such file or directory");
  EXPECT_EQ(test::messageOf([&] { convertPackedMatrices(packed.path(), {}, ""); }),
            "mkdir(): No such file or directory");
}

TEST(ConvertPackedMatrices, LeavesTheDirectoryAloneWhenBuildingFails) {
  const PackedFolder packed(R"({"S1":{"s":[{"port":["in{[]",[1],"s"],"types":[["t",[1]]]}]}})");
  EXPECT_NE(test::messageOf([&] {
              convertPackedMatrices(packed.path(), {"matrices.json"}, packed.path("out"));
            }),
            "");
  EXPECT_FALSE(std::filesystem::exists(packed.path("out")));
}

TEST(ConvertPackedMatrices, WantsAMatricesMember) {
  const PackedFolder packed("{}");
  for (const char* text : {"nonsense", "[]", "{}", R"({"Matrices":{}})", ""}) {
    static_cast<void>(packed.file("dbpack_matrices.json", text));
    EXPECT_EQ(
        test::messageOf([&] { convertPackedMatrices(packed.path(), {}, packed.path("out")); }),
        "matrices object not found")
        << text;
  }
}

TEST(ConvertPackedMatrices, SurvivesDeepNesting) {
  const PackedFolder packed("{}");
  static_cast<void>(packed.file("dbpack_matrices.json", std::string(200000, '[')));
  EXPECT_EQ(test::messageOf([&] { convertPackedMatrices(packed.path(), {}, packed.path("out")); }),
            "matrices object not found");
}

}  // namespace
}  // namespace quenfold
