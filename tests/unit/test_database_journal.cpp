#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/journal.h"
#include "support/folder_texts.h"
#include "support/scratch.h"

namespace quenfold::database {
namespace {

namespace fs = std::filesystem;
using test::FolderTexts;
using test::isKnown;
using test::kNew;
using test::kOld;

constexpr const char* kJournal = ".quenfold-db.journal";
constexpr const char* kStagedA = ".quenfold-db.new.a.json";
constexpr const char* kStagedB = ".quenfold-db.new.b.json";
constexpr const char* kStagedJournal = ".quenfold-db.new.journal";
constexpr const char* kText =
    "quenfold-db journal 1\n"
    "replace a.json\n"
    "replace b.json\n"
    "remove c.json\n"
    "end\n";

/// They make `kNew` of `kOld`.
Changes changes() { return {{{"a.json", kStagedA}, {"b.json", kStagedB}}, {"c.json"}}; }

TEST(StagedName, StandsBesideTheFile) { EXPECT_EQ(stagedNameOf("a.json"), kStagedA); }

TEST(Changes, AreNamedWhicheverTheyAre) {
  EXPECT_TRUE(isNamed(changes(), "a.json"));
  EXPECT_TRUE(isNamed(changes(), "c.json"));
  EXPECT_FALSE(isNamed(changes(), "d.json"));
  EXPECT_FALSE(isNamed({}, "a.json"));
}

TEST(JournalText, NamesWhatIsReplacedAndWhatIsRemoved) {
  EXPECT_EQ(toText(changes()), kText);
  EXPECT_EQ(toText({}), "quenfold-db journal 1\nend\n");
}

TEST(JournalText, IsReadBack) {
  const std::optional<Changes> read = changesFrom(kText, isKnown);
  ASSERT_TRUE(read);
  ASSERT_EQ(read->replaced.size(), 2U);
  EXPECT_EQ(read->replaced[0].name, "a.json");
  EXPECT_EQ(read->replaced[0].staged, kStagedA);
  EXPECT_EQ(read->replaced[1].name, "b.json");
  EXPECT_EQ(read->replaced[1].staged, kStagedB);
  EXPECT_EQ(read->removed, std::vector<std::string>{"c.json"});
  const std::optional<Changes> none = changesFrom("quenfold-db journal 1\nend\n", isKnown);
  ASSERT_TRUE(none);
  EXPECT_TRUE(none->replaced.empty() && none->removed.empty());
}

TEST(JournalText, IsNoneWhenItIsCutShort) {
  const std::string_view text = kText;
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_FALSE(changesFrom(text.substr(0, length), isKnown)) << length;
  }
}

TEST(JournalText, IsNoneWithAnythingElseInIt) {
  const std::string head = "quenfold-db journal 1\n";
  const std::string embeddedNul("replace a.json\0\n", 16);
  for (const std::string& text :
       {std::string("\n"), std::string("end\n"), std::string("replace a.json\nend\n"),
        std::string("quenfold-db journal 2\nreplace a.json\nend\n"),
        std::string("Quenfold-db journal 1\nreplace a.json\nend\n"), std::string(kText) + "\n",
        std::string(kText) + kText, head + "\nend\n", head + "replace a.json\r\nend\n",
        head + "replace  a.json\nend\n", head + "replace\nend\n", head + "replace \nend\n",
        head + "move a.json\nend\n", head + "remove c.json\nreplace a.json\nend\n",
        head + embeddedNul + "end\n"}) {
    EXPECT_FALSE(changesFrom(text, isKnown)) << text;
  }
}

TEST(JournalText, IsNoneWithANameThatIsNotOfADatabase) {
  for (const char* const name :
       {"d.json", "/a.json", "./a.json", "../a.json", "a.json/", "folder/a.json", ".", "..",
        ".quenfold-db.journal", ".quenfold-db.new.a.json", "A.JSON", "a.json "}) {
    for (const char* const verb : {"replace ", "remove "}) {
      const std::string text = std::string("quenfold-db journal 1\n") + verb + name + "\nend\n";
      EXPECT_FALSE(changesFrom(text, isKnown)) << text;
    }
  }
}

TEST(JournalText, IsNoneWithANameThatComesTwice) {
  const std::string head = "quenfold-db journal 1\n";
  for (const char* const lines :
       {"replace a.json\nreplace a.json\n", "remove a.json\nremove a.json\n",
        "replace a.json\nremove a.json\n"}) {
    EXPECT_FALSE(changesFrom(head + lines + "end\n", isKnown)) << lines;
  }
}

/// A folder with those files, open.
struct FolderWith {
  explicit FolderWith(const FolderTexts& texts) { test::putTexts(scratch, texts); }

  [[nodiscard]] FolderTexts texts() const { return test::textsIn(scratch); }

  test::ScratchFolder scratch;
  OpenFolder folder{scratch.path()};
};

FolderTexts with(FolderTexts texts, const FolderTexts& more) {
  texts.insert(more.begin(), more.end());
  return texts;
}

const FolderTexts kStaged = {{kStagedA, "new a"}, {kStagedB, "new b"}};

TEST(Journal, StandsUnderItsNameAlone) {
  const FolderWith here(with(kOld, kStaged));
  writeJournal(here.folder, changes());
  EXPECT_EQ(here.texts(), with(with(kOld, kStaged), {{kJournal, kText}}));
}

TEST(Journal, IsNotThereWhenItCannotBeWritten) {
  const FolderWith here(kOld);
  fs::create_directory(here.scratch.path(kStagedJournal));
  EXPECT_EQ(test::messageOf([&] { writeJournal(here.folder, changes()); }),
            "error while opening file: " + here.scratch.path(kStagedJournal));
  EXPECT_EQ(here.texts(), with(kOld, {{kStagedJournal, "(folder)"}}));
}

TEST(CarryOut, DoesWhatTheJournalSaysAndTakesItAway) {
  const FolderWith here(with(with(kOld, kStaged), {{kJournal, kText}}));
  carryOut(here.folder, changes());
  EXPECT_EQ(here.texts(), kNew);
}

TEST(CarryOut, LeavesTheJournalWhereItFails) {
  const FolderWith here(with(kOld, {{kStagedA, "new a"}, {kJournal, kText}}));
  EXPECT_EQ(
      test::messageOf([&] { carryOut(here.folder, changes()); }),
      "error while renaming file: " + here.scratch.path(kStagedB) + ": No such file or directory");
  FolderTexts left = with(kOld, {{kJournal, kText}});
  left["a.json"] = "new a";
  EXPECT_EQ(here.texts(), left);
}

TEST(Undo, TakesAwayWhatWasStaged) {
  const FolderWith here(
      with(with(kOld, kStaged), {{kStagedJournal, "quenf"}, {".quenfold-db.new.c.json", "other"}}));
  undo(here.folder, changes());
  EXPECT_EQ(here.texts(), with(kOld, {{".quenfold-db.new.c.json", "other"}}));
}

/// Settles a folder of those files twice: what is done must stay.
void expectSettled(const FolderTexts& before, const FolderTexts& after) {
  const FolderWith here(before);
  EXPECT_EQ(isSettled(here.folder), before == after);
  settle(here.folder, isKnown);
  EXPECT_EQ(here.texts(), after);
  EXPECT_TRUE(isSettled(here.folder));
  settle(here.folder, isKnown);
  EXPECT_EQ(here.texts(), after);
}

TEST(Settle, BringsTheOldFilesBackBeforeTheJournalStands) {
  expectSettled(kOld, kOld);
  expectSettled(with(kOld, {{kStagedA, ""}}), kOld);
  expectSettled(with(kOld, {{kStagedA, "ne"}}), kOld);
  expectSettled(with(kOld, {{kStagedA, "new a"}}), kOld);
  expectSettled(with(kOld, {{kStagedA, "new a"}, {kStagedB, "n"}}), kOld);
  expectSettled(with(kOld, kStaged), kOld);
  expectSettled(with(with(kOld, kStaged), {{kStagedJournal, ""}}), kOld);
  expectSettled(with(with(kOld, kStaged), {{kStagedJournal, "quenfold-db jou"}}), kOld);
  expectSettled(with(with(kOld, kStaged), {{kStagedJournal, kText}}), kOld);
}

TEST(Settle, BringsTheNewFilesOnceTheJournalStands) {
  const FolderTexts journal = {{kJournal, kText}};
  FolderTexts left = with(with(kOld, kStaged), journal);
  expectSettled(left, kNew);
  left.erase(kStagedA);
  left["a.json"] = "new a";
  expectSettled(left, kNew);
  left.erase(kStagedB);
  left["b.json"] = "new b";
  expectSettled(left, kNew);
  left.erase("c.json");
  expectSettled(left, kNew);
  left.erase(kJournal);
  expectSettled(left, kNew);
}

TEST(Settle, TakesAwayWhatTheJournalDoesNotNameToo) {
  expectSettled(with(with(kOld, kStaged), {{kJournal, kText},
                                           {".quenfold-db.new.c.json", "of another run"},
                                           {kStagedJournal, "quenf"}}),
                kNew);
}

TEST(Settle, LeavesOtherHiddenFilesAlone) {
  const FolderTexts others = {{".quenfold-db.new", "x"}, {".quenfold-db.journal2", "y"}};
  expectSettled(with(kOld, others), with(kOld, others));
}

/// What settling the folder says behind its own words and the path; it must change nothing.
std::string refusalIn(const FolderWith& here) {
  const FolderTexts before = here.texts();
  std::string message = test::messageOf([&] { settle(here.folder, isKnown); });
  EXPECT_EQ(here.texts(), before);
  EXPECT_FALSE(isSettled(here.folder));
  const std::string waits = "an interrupted replacement waits in " + here.folder.path() + ": ";
  EXPECT_EQ(message.substr(0, waits.size()), waits);
  return message.substr(waits.size());
}

TEST(Settle, TouchesNothingForADamagedJournal) {
  const std::string head = "quenfold-db journal 1\n";
  for (const std::string& text :
       {std::string(), std::string("\0\0\0\0", 4), head + "replace a.json\n",
        head + "replace ../a.json\nend\n", head + "remove notes\nend\n",
        head + "replace a.json\nremove /etc/passwd\nend\n",
        head + std::string(100000, 'x') + "\nend\n"}) {
    const FolderWith here(with(with(kOld, kStaged), {{kJournal, text}}));
    EXPECT_EQ(refusalIn(here), "damaged journal: " + here.scratch.path(kJournal));
  }
}

TEST(Settle, TouchesNothingForAJournalThatIsNoFile) {
  const FolderWith link(with(kOld, kStaged));
  fs::create_symlink("notes", link.scratch.path(kJournal));
  EXPECT_EQ(refusalIn(link), "error while opening file: " + link.scratch.path(kJournal) +
                                 ": Too many levels of symbolic links");
  const FolderWith folder(with(kOld, kStaged));
  fs::create_directory(folder.scratch.path(kJournal));
  EXPECT_EQ(refusalIn(folder),
            "error while reading file: " + folder.scratch.path(kJournal) + ": Is a directory");
  const FolderWith pipe(with(kOld, kStaged));
  ASSERT_EQ(mkfifo(pipe.scratch.path(kJournal).c_str(), 0600), 0);
  EXPECT_EQ(refusalIn(pipe), "damaged journal: " + pipe.scratch.path(kJournal));
}

TEST(Settle, TouchesNothingWhenANewFileIsNowhere) {
  const FolderWith here(with(kOld, {{kStagedA, "new a"}, {kJournal, kText}}));
  EXPECT_EQ(refusalIn(here), "missing file: " + here.scratch.path(kStagedB));
}

TEST(Settle, TouchesNothingWhenAFileHasBecomeAnythingElse) {
  for (const char* const name : {"b.json", kStagedB, "c.json"}) {
    const FolderWith here(with(with(kOld, kStaged), {{kJournal, kText}}));
    fs::remove(here.scratch.path(name));
    fs::create_directory(here.scratch.path(name));
    EXPECT_EQ(refusalIn(here), "not a regular file: " + here.scratch.path(name));
    fs::remove(here.scratch.path(name));
    fs::create_symlink("notes", here.scratch.path(name));
    EXPECT_EQ(refusalIn(here), "not a regular file: " + here.scratch.path(name));
  }
}

TEST(Settle, SaysWhatCannotBeTakenAway) {
  const FolderWith here(kOld);
  fs::create_directory(here.scratch.path(kStagedA));
  EXPECT_EQ(refusalIn(here),
            "error while removing file: " + here.scratch.path(kStagedA) + ": Is a directory");
}

}  // namespace
}  // namespace quenfold::database
