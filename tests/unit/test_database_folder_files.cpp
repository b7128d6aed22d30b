#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "database/folder_files.h"
#include "support/folder_texts.h"
#include "support/scratch.h"

namespace quenfold::database {
namespace {

namespace fs = std::filesystem;

struct ScratchOpen {
  test::ScratchFolder scratch;
  OpenFolder folder{scratch.path()};

  [[nodiscard]] std::string at(std::string_view name) const { return scratch.path(name); }
};

TEST(HasFile, TellsAFileFromNone) {
  const ScratchOpen here;
  static_cast<void>(here.scratch.file("a", ""));
  EXPECT_TRUE(hasFile(here.folder, "a"));
  EXPECT_FALSE(hasFile(here.folder, "b"));
}

TEST(HasFile, RefusesAllElse) {
  const ScratchOpen here;
  fs::create_directory(here.at("folder"));
  fs::create_symlink(here.scratch.file("a", ""), here.at("link"));
  fs::create_symlink("nowhere", here.at("dangling"));
  for (const char* const name : {"folder", "link", "dangling"}) {
    EXPECT_EQ(test::messageOf([&] { hasFile(here.folder, name); }),
              "not a regular file: " + here.at(name));
  }
}

TEST(HasFile, SaysWhenItCannotTell) {
  const ScratchOpen here;
  const std::string name(300, 'x');
  EXPECT_EQ(test::messageOf([&] { hasFile(here.folder, name); }),
            "error while opening file: " + here.at(name) + ": File name too long");
}

TEST(BytesOf, GivesThemAsTheyAreUpToTheMost) {
  const ScratchOpen here;
  const std::string bytes("\0a\n\r\xff", 5);
  static_cast<void>(here.scratch.file("a", bytes));
  static_cast<void>(here.scratch.file("empty", ""));
  EXPECT_EQ(bytesOf(here.folder, "a", 100), bytes);
  EXPECT_EQ(bytesOf(here.folder, "a", 5), bytes);
  EXPECT_EQ(bytesOf(here.folder, "a", 4), bytes.substr(0, 4));
  EXPECT_EQ(bytesOf(here.folder, "empty", 4), "");
}

TEST(BytesOf, FollowsNoLinkAndWaitsForNoPipe) {
  const ScratchOpen here;
  fs::create_symlink(here.scratch.file("a", "text"), here.at("link"));
  ASSERT_EQ(mkfifo(here.at("pipe").c_str(), 0600), 0);
  EXPECT_EQ(test::messageOf([&] { bytesOf(here.folder, "link", 4); }),
            "error while opening file: " + here.at("link") + ": Too many levels of symbolic links");
  EXPECT_EQ(bytesOf(here.folder, "pipe", 4), "");
}

TEST(BytesOf, SaysWhatCannotBeRead) {
  const ScratchOpen here;
  fs::create_directory(here.at("folder"));
  EXPECT_EQ(test::messageOf([&] { bytesOf(here.folder, "none", 4); }),
            "error while opening file: " + here.at("none") + ": No such file or directory");
  EXPECT_EQ(test::messageOf([&] { bytesOf(here.folder, "folder", 4); }),
            "error while reading file: " + here.at("folder") + ": Is a directory");
}

TEST(FinishFile, GivesThePermissionsOfTheOneThatItReplaces) {
  const ScratchOpen here;
  static_cast<void>(here.scratch.file("new", "text"));
  for (const unsigned permissions : {0600U, 0444U, 0640U, 0777U, 0200U}) {
    test::setPermissions(here.scratch.file("old", ""), permissions);
    test::setPermissions(here.at("new"), 0644);
    finishFile(here.folder, "new", "old");
    EXPECT_EQ(test::permissionsOf(here.at("new")), permissions);
    test::setPermissions(here.at("old"), 0600);
  }
  EXPECT_EQ(here.scratch.bytesOf("new"), "text");
}

TEST(FinishFile, LeavesThePermissionsOfOneThatReplacesNone) {
  const ScratchOpen here;
  test::setPermissions(here.scratch.file("new", ""), 0604);
  finishFile(here.folder, "new", "none");
  EXPECT_EQ(test::permissionsOf(here.at("new")), 0604U);
}

TEST(FinishFile, SaysWhatIsMissing) {
  const ScratchOpen here;
  EXPECT_EQ(test::messageOf([&] { finishFile(here.folder, "new", "old"); }),
            "error while opening file: " + here.at("new") + ": No such file or directory");
}

struct stat statusOf(const std::string& path) {
  struct stat status = {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status;
}

constexpr uid_t kUser = 12345;
constexpr gid_t kGroup = 23456;

TEST(FinishFile, GivesTheSuperusersFileTheOwnersOfTheOneThatItReplaces) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "nobody else gives files away";
  }
  const ScratchOpen here;
  static_cast<void>(here.scratch.file("new", ""));
  ASSERT_EQ(chown(here.scratch.file("old", "").c_str(), kUser, kGroup), 0);
  test::setPermissions(here.at("old"), 0640);
  finishFile(here.folder, "new", "old");
  EXPECT_EQ(statusOf(here.at("new")).st_uid, kUser);
  EXPECT_EQ(statusOf(here.at("new")).st_gid, kGroup);
  EXPECT_EQ(test::permissionsOf(here.at("new")), 0640U);
}

TEST(FinishFile, LeavesAUserThatMayReplaceAnothersFileItsOwn) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "nobody else becomes another user";
  }
  const ScratchOpen here;
  test::setPermissions(here.scratch.path(), 0777);
  test::setPermissions(here.scratch.file("old", ""), 0664);
  ASSERT_EQ(seteuid(kUser), 0);
  static_cast<void>(here.scratch.file("new", ""));
  EXPECT_NO_THROW(finishFile(here.folder, "new", "old"));
  ASSERT_EQ(seteuid(0), 0);
  EXPECT_EQ(statusOf(here.at("new")).st_uid, kUser);
  EXPECT_EQ(test::permissionsOf(here.at("new")), 0664U);
}

TEST(RenameFile, TakesThePlaceOfAnother) {
  const ScratchOpen here;
  test::putTexts(here.scratch, {{"a", "new"}, {"b", "old"}});
  renameFile(here.folder, "a", "b");
  EXPECT_EQ(test::textsIn(here.scratch), (test::FolderTexts{{"b", "new"}}));
  EXPECT_EQ(test::messageOf([&] { renameFile(here.folder, "a", "b"); }),
            "error while renaming file: " + here.at("a") + ": No such file or directory");
}

TEST(RemoveFile, MindsNoneThatIsMissing) {
  const ScratchOpen here;
  test::putTexts(here.scratch, {{"a", ""}, {"b", ""}});
  removeFile(here.folder, "a");
  removeFile(here.folder, "a");
  EXPECT_TRUE(tryRemoveFile(here.folder, "b"));
  EXPECT_TRUE(tryRemoveFile(here.folder, "b"));
  EXPECT_EQ(test::textsIn(here.scratch), test::FolderTexts());
}

TEST(RemoveFile, RemovesNoFolder) {
  const ScratchOpen here;
  fs::create_directory(here.at("folder"));
  EXPECT_EQ(test::messageOf([&] { removeFile(here.folder, "folder"); }),
            "error while removing file: " + here.at("folder") + ": Is a directory");
  EXPECT_FALSE(tryRemoveFile(here.folder, "folder"));
  EXPECT_TRUE(fs::exists(here.at("folder")));
}

}  // namespace
}  // namespace quenfold::database
