#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

#include "app/files.h"
#include "database/staging.h"
#include "support/failing_new.h"
#include "support/folder_texts.h"
#include "support/scratch.h"

namespace quenfold::database {
namespace {

namespace fs = std::filesystem;
using test::FolderTexts;
using test::isKnown;
using test::kNew;
using test::kOld;

/// A folder that holds the old files.
struct OldFolder {
  OldFolder() { test::putTexts(scratch, kOld); }

  [[nodiscard]] std::string path() const { return scratch.path(); }
  [[nodiscard]] FolderTexts texts() const { return test::textsIn(scratch); }

  test::ScratchFolder scratch;
};

HeldFolder reading(const std::string& path) { return HeldFolder::forReading(path, isKnown); }
HeldFolder writing(const std::string& path) { return HeldFolder::forWriting(path, isKnown); }

void expectInUse(const std::string& path, HeldFolder (*hold)(const std::string&)) {
  EXPECT_EQ(test::messageOf([&] { hold(path); }), "folder in use: " + path);
}

/// Everything that makes the new files of the old ones, up to the commit.
void stageAll(Replacement& replacement) {
  writeFile(replacement.stage("a.json"), "new a");
  writeFile(replacement.stage("b.json"), "new b");
  replacement.remove("c.json");
}

void replaceAll(const std::string& path) {
  const HeldFolder held = writing(path);
  Replacement replacement(held);
  stageAll(replacement);
  replacement.commit();
}

TEST(HeldForReading, IsSharedByReadersAlone) {
  const OldFolder here;
  {
    const HeldFolder one = reading(here.path());
    EXPECT_FALSE(one.isForWriting());
    EXPECT_EQ(one.folder().path(), here.path());
    EXPECT_NO_THROW(reading(here.path()));
    expectInUse(here.path(), writing);
  }
  EXPECT_NO_THROW(writing(here.path()));
  EXPECT_EQ(here.texts(), kOld);
}

TEST(HeldForReading, NeedsAFolder) {
  const OldFolder here;
  const std::string none = here.scratch.path("none");
  const std::string file = here.scratch.path("a.json");
  EXPECT_EQ(test::messageOf([&] { reading(none); }),
            "error while opening folder: " + none + ": No such file or directory");
  EXPECT_FALSE(fs::exists(none));
  EXPECT_EQ(test::messageOf([&] { reading(file); }),
            "error while opening folder: " + file + ": Not a directory");
}

TEST(HeldForReading, FinishesWhatWasInterruptedAndSharesTheFolderThen) {
  const OldFolder here;
  static_cast<void>(here.scratch.file(".quenfold-db.new.a.json", "new a"));
  static_cast<void>(
      here.scratch.file(".quenfold-db.journal", "quenfold-db journal 1\nreplace a.json\nend\n"));
  const HeldFolder held = reading(here.path());
  EXPECT_FALSE(held.isForWriting());
  EXPECT_EQ(here.texts(),
            (FolderTexts{{"a.json", "new a"}, {"c.json", "old c"}, {"notes", "no database"}}));
  EXPECT_NO_THROW(reading(here.path()));
}

TEST(HeldForReading, NeedsTheFolderAloneToFinishWhatWasInterrupted) {
  const OldFolder here;
  const HeldFolder other = reading(here.path());
  static_cast<void>(here.scratch.file(".quenfold-db.new.a.json", "new a"));
  expectInUse(here.path(), reading);
  EXPECT_TRUE(fs::exists(here.scratch.path(".quenfold-db.new.a.json")));
}

TEST(HeldForReading, IsNotGivenOverADamagedJournal) {
  const OldFolder here;
  const std::string journal = here.scratch.file(".quenfold-db.journal", "");
  const std::string message =
      "an interrupted replacement waits in " + here.path() + ": damaged journal: " + journal;
  EXPECT_EQ(test::messageOf([&] { reading(here.path()); }), message);
  EXPECT_EQ(test::messageOf([&] { writing(here.path()); }), message);
}

TEST(HeldForWriting, IsForOneRunAlone) {
  const OldFolder here;
  {
    const HeldFolder held = writing(here.path());
    EXPECT_TRUE(held.isForWriting());
    expectInUse(here.path(), writing);
    expectInUse(here.path(), reading);
    const std::string link = here.scratch.path("link");
    fs::create_directory_symlink(here.path(), link);
    expectInUse(link, reading);
    fs::remove(link);
  }
  EXPECT_NO_THROW(reading(here.path()));
  EXPECT_EQ(here.texts(), kOld);
}

TEST(HeldForWriting, UndoesWhatWasInterrupted) {
  const OldFolder here;
  static_cast<void>(here.scratch.file(".quenfold-db.new.a.json", "new"));
  const HeldFolder held = writing(here.path());
  EXPECT_EQ(here.texts(), kOld);
}

TEST(HeldForWriting, CreatesAFolderThatGoesUnlessSomethingIsPutIntoIt) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("new");
  {
    const HeldFolder held = writing(path);
    EXPECT_TRUE(fs::is_directory(path));
    expectInUse(path, writing);
    EXPECT_TRUE(fs::is_directory(path));
  }
  EXPECT_FALSE(fs::exists(path));
  {
    const HeldFolder held = writing(path);
    Replacement replacement(held);
    writeFile(replacement.stage("a.json"), "new a");
  }
  EXPECT_FALSE(fs::exists(path)) << "what was staged goes first";
  replaceAll(path);
  EXPECT_EQ(readFile(path + "/a.json"), "new a");
}

TEST(HeldForWriting, LeavesAnEmptyFolderThatWasThereBefore) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("empty");
  fs::create_directory(path);
  writing(path);
  EXPECT_TRUE(fs::is_directory(path));
}

TEST(HeldForWriting, SaysWhyItCannot) {
  const OldFolder here;
  const std::string orphan = here.scratch.path("none/new");
  const std::string file = here.scratch.path("a.json");
  const std::string dangling = here.scratch.path("dangling");
  fs::create_symlink("nowhere", dangling);
  EXPECT_EQ(test::messageOf([&] { writing(orphan); }),
            "error while creating folder: " + orphan + ": No such file or directory");
  EXPECT_EQ(test::messageOf([&] { writing(file); }),
            "error while opening folder: " + file + ": Not a directory");
  EXPECT_EQ(test::messageOf([&] { writing(dangling); }),
            "error while opening folder: " + dangling + ": No such file or directory");
  EXPECT_TRUE(fs::is_symlink(dangling));
}

TEST(HeldForWriting, EndsWithAProcessThatIsKilled) {
  const OldFolder here;
  std::array<int, 2> pipe = {};
  ASSERT_EQ(::pipe(pipe.data()), 0);
  const pid_t child = fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    const HeldFolder held = writing(here.path());
    const char ready = held.isForWriting() ? 'x' : '-';
    if (write(pipe[1], &ready, 1) == 1) {
      pause();
    }
    _exit(0);
  }
  char byte = 0;
  ASSERT_EQ(read(pipe[0], &byte, 1), 1);
  expectInUse(here.path(), reading);
  kill(child, SIGKILL);
  ASSERT_EQ(waitpid(child, nullptr, 0), child);
  EXPECT_NO_THROW(writing(here.path()));
  close(pipe[0]);
  close(pipe[1]);
}

TEST(Replacement, ReplacesAddsAndRemovesAtOnce) {
  const OldFolder here;
  const HeldFolder held = writing(here.path());
  Replacement replacement(held);
  stageAll(replacement);
  FolderTexts staged = kOld;
  staged[".quenfold-db.new.a.json"] = "new a";
  staged[".quenfold-db.new.b.json"] = "new b";
  EXPECT_EQ(here.texts(), staged);
  replacement.commit();
  EXPECT_EQ(here.texts(), kNew);
}

TEST(Replacement, StagesBesideTheTarget) {
  const OldFolder here;
  const HeldFolder held = writing(here.path());
  EXPECT_EQ(Replacement(held).stage("a.json"), here.path() + "/.quenfold-db.new.a.json");
}

TEST(Replacement, LeavesTheNewFilesWhenItGoes) {
  const OldFolder here;
  replaceAll(here.path());
  EXPECT_EQ(here.texts(), kNew);
  replaceAll(here.path());
  EXPECT_EQ(here.texts(), kNew);
}

TEST(Replacement, LeavesTheOldFilesWithoutACommit) {
  const OldFolder here;
  const HeldFolder held = writing(here.path());
  {
    Replacement replacement(held);
    stageAll(replacement);
  }
  EXPECT_EQ(here.texts(), kOld);
}

TEST(Replacement, KeepsThePermissionsAndGivesNewFilesThoseOfTheUmask) {
  const OldFolder here;
  test::setPermissions(here.scratch.path("a.json"), 0440);
  const mode_t usual = umask(026);
  replaceAll(here.path());
  umask(usual);
  EXPECT_EQ(test::permissionsOf(here.scratch.path("a.json")), 0440U);
  EXPECT_EQ(test::permissionsOf(here.scratch.path("b.json")), 0640U);
}

TEST(Replacement, MayChangeNothing) {
  const OldFolder here;
  const HeldFolder held = writing(here.path());
  Replacement(held).commit();
  EXPECT_EQ(here.texts(), kOld);
}

TEST(Replacement, ChangesNothingWhenAStagedFileIsMissing) {
  const OldFolder here;
  const HeldFolder held = writing(here.path());
  {
    Replacement replacement(held);
    writeFile(replacement.stage("a.json"), "new a");
    const std::string path = replacement.stage("b.json");
    EXPECT_EQ(test::messageOf([&] { replacement.commit(); }),
              "error while opening file: " + path + ": No such file or directory");
  }
  EXPECT_EQ(here.texts(), kOld);
}

TEST(Replacement, ChangesNothingWhereAFileIsAnythingElse) {
  for (const char* const name : {"a.json", "b.json", "c.json"}) {
    for (const bool isLink : {true, false}) {
      const OldFolder here;
      const std::string path = here.scratch.path(name);
      fs::remove(path);
      if (isLink) {
        fs::create_symlink("notes", path);
      } else {
        fs::create_directory(path);
      }
      const FolderTexts before = here.texts();
      EXPECT_EQ(test::messageOf([&] { replaceAll(here.path()); }), "not a regular file: " + path);
      EXPECT_EQ(here.texts(), before);
    }
  }
}

TEST(Replacement, ChangesNothingWhenTheFolderHasGoneElsewhere) {
  const test::ScratchFolder scratch;
  const std::string path = scratch.path("folder");
  const std::string elsewhere = scratch.path("elsewhere");
  fs::create_directory(path);
  writeFile(path + "/a.json", "old a");
  const HeldFolder held = writing(path);
  {
    Replacement replacement(held);
    const std::string staged = replacement.stage("a.json");
    fs::rename(path, elsewhere);
    fs::create_directory(path);
    writeFile(staged, "new a");
    EXPECT_EQ(test::messageOf([&] { replacement.commit(); }),
              "error while opening file: " + staged + ": No such file or directory");
  }
  EXPECT_EQ(readFile(elsewhere + "/a.json"), "old a");
  EXPECT_FALSE(fs::exists(path + "/a.json"));
}

TEST(Replacement, RemovesWhatIsNotThere) {
  const OldFolder here;
  const HeldFolder held = writing(here.path());
  Replacement replacement(held);
  replacement.remove("b.json");
  replacement.commit();
  EXPECT_EQ(here.texts(), kOld);
}

TEST(Replacement, TakesEachNameOfADatabaseOnce) {
  const OldFolder here;
  const HeldFolder held = writing(here.path());
  Replacement replacement(held);
  static_cast<void>(replacement.stage("a.json"));
  replacement.remove("b.json");
  for (const char* const name : {"a.json", "b.json", "notes", "", "../a.json"}) {
    EXPECT_THROW(static_cast<void>(replacement.stage(name)), std::logic_error) << name;
    EXPECT_THROW(replacement.remove(name), std::logic_error) << name;
  }
}

TEST(Replacement, NeedsTheFolderForItself) {
  const OldFolder here;
  const HeldFolder held = reading(here.path());
  EXPECT_THROW(const Replacement replacement(held), std::logic_error);
}

#if QUENFOLD_FAILING_NEW
/// Whether the commit had memory enough.
bool committed(const HeldFolder& held, std::size_t requests) {
  Replacement replacement(held);
  stageAll(replacement);
  const test::FailingNew failing(requests);
  try {
    replacement.commit();
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

TEST(Replacement, ChangesNothingWithoutMemory) {
  const OldFolder here;
  const HeldFolder held = writing(here.path());
  std::size_t requests = 0;
  while (!committed(held, requests)) {
    ASSERT_EQ(here.texts(), kOld) << requests;
    ASSERT_LT(++requests, 1000U);
  }
  EXPECT_GT(requests, 0U);
  EXPECT_EQ(here.texts(), kNew);
}
#endif

}  // namespace
}  // namespace quenfold::database
