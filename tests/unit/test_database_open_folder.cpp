#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "database/open_folder.h"
#include "support/folder_texts.h"
#include "support/scratch.h"

namespace quenfold::database {
namespace {

namespace fs = std::filesystem;

TEST(OpenFolder, GivesPathsInIt) {
  const test::ScratchFolder scratch;
  const OpenFolder folder(scratch.path());
  EXPECT_EQ(folder.path(), scratch.path());
  EXPECT_EQ(folder.pathOf("a.json"), scratch.path() + "/a.json");
}

TEST(OpenFolder, SaysWhyItCannot) {
  const test::ScratchFolder scratch;
  const std::string missing = scratch.path("none");
  const std::string file = scratch.file("file", "");
  EXPECT_EQ(test::messageOf([&] { const OpenFolder folder(missing); }),
            "error while opening folder: " + missing + ": No such file or directory");
  EXPECT_EQ(test::messageOf([&] { const OpenFolder folder(file); }),
            "error while opening folder: " + file + ": Not a directory");
}

TEST(OpenFolder, MayBeMovedWithItsLock) {
  const test::ScratchFolder scratch;
  const OpenFolder other(scratch.path());
  {
    OpenFolder first(scratch.path());
    ASSERT_TRUE(tryLock(first, Lock::kExclusive));
    const OpenFolder second(std::move(first));
    EXPECT_EQ(second.path(), scratch.path());
    EXPECT_FALSE(tryLock(other, Lock::kShared));
  }
  EXPECT_TRUE(tryLock(other, Lock::kShared));
}

TEST(CreateFolder, CreatesWhatIsMissingAsTheUmaskSays) {
  const test::ScratchFolder scratch;
  const mode_t usual = umask(027);
  EXPECT_TRUE(createFolder(scratch.path("new")));
  umask(usual);
  EXPECT_TRUE(fs::is_directory(scratch.path("new")));
  EXPECT_EQ(test::permissionsOf(scratch.path("new")), 0750U);
  EXPECT_FALSE(createFolder(scratch.path("new")));
  EXPECT_FALSE(createFolder(scratch.file("file", "")));
}

TEST(CreateFolder, CreatesNoParent) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("none/new");
  EXPECT_EQ(test::messageOf([&] { createFolder(path); }),
            "error while creating folder: " + path + ": No such file or directory");
}

TEST(IsAt, ComparesTheFolderAndNotThePath) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("folder");
  const std::string elsewhere = scratch.path("elsewhere");
  const std::string link = scratch.path("link");
  ASSERT_TRUE(createFolder(path));
  fs::create_directory_symlink(path, link);
  const OpenFolder folder(link);
  EXPECT_TRUE(isAt(folder, path));
  EXPECT_TRUE(isAt(folder, link));
  EXPECT_FALSE(isAt(folder, scratch.path()));
  EXPECT_FALSE(isAt(folder, "/proc")) << "another file system";
  fs::rename(path, elsewhere);
  EXPECT_FALSE(isAt(folder, path));
  ASSERT_TRUE(createFolder(path));
  EXPECT_FALSE(isAt(folder, path));
  EXPECT_TRUE(isAt(folder, elsewhere));
}

TEST(TryLock, LetsReadersStandSideBySideAndAWriterAlone) {
  const test::ScratchFolder scratch;
  const OpenFolder one(scratch.path());
  const OpenFolder two(scratch.path());
  EXPECT_TRUE(tryLock(one, Lock::kShared));
  EXPECT_TRUE(tryLock(two, Lock::kShared));
  EXPECT_FALSE(tryLock(two, Lock::kExclusive));
  EXPECT_TRUE(tryLock(one, Lock::kExclusive)) << "a refused lock leaves none";
  EXPECT_FALSE(tryLock(two, Lock::kShared));
  EXPECT_TRUE(tryLock(one, Lock::kShared));
  EXPECT_TRUE(tryLock(two, Lock::kShared));
}

TEST(NamesIn, GivesEachName) {
  const test::ScratchFolder scratch;
  test::putTexts(scratch, {{"b", ""}, {".hidden", ""}, {"a", ""}});
  std::vector<std::string> names = namesIn(OpenFolder(scratch.path()));
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{".", "..", ".hidden", "a", "b"}));
}

TEST(NamesIn, IsOfTheFolderThatIsOpenWhereverItGoes) {
  const test::ScratchFolder scratch;
  ASSERT_TRUE(createFolder(scratch.path("before")));
  const OpenFolder folder(scratch.path("before"));
  fs::rename(scratch.path("before"), scratch.path("after"));
  static_cast<void>(scratch.file("after/a", ""));
  EXPECT_EQ(namesIn(folder).size(), 3U);
}

TEST(SyncNames, TakesTheFolderAndTheOneAroundIt) {
  const test::ScratchFolder scratch;
  const OpenFolder folder(scratch.path());
  EXPECT_NO_THROW(syncNames(folder));
  EXPECT_NO_THROW(syncNamesBeside(folder));
}

}  // namespace
}  // namespace quenfold::database
