#include "database/journal.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <set>
#include <utility>

#include "app/error.h"
#include "app/files.h"
#include "app/text.h"
#include "database/folder_files.h"

namespace quenfold::database {
namespace {

constexpr const char* kJournal = ".quenfold-db.journal";
constexpr std::string_view kStagedPrefix = ".quenfold-db.new.";
// It goes with the staged files when it is left over; no file of a database is named so.
constexpr const char* kStagedJournal = ".quenfold-db.new.journal";

constexpr std::string_view kHeader = "quenfold-db journal 1\n";
constexpr std::string_view kReplace = "replace ";
constexpr std::string_view kRemove = "remove ";
constexpr std::string_view kEnd = "end\n";
// Far more than every name of a database takes. A longer text has no end mark where it is cut.
constexpr std::size_t kMostJournalBytes = 65536;

void addLine(Changes& changes, std::string_view line) {
  if (beginsWith(line, kReplace)) {
    line.remove_prefix(kReplace.size());
    changes.replaced.push_back({std::string(line), stagedNameOf(line)});
  } else if (beginsWith(line, kRemove)) {
    line.remove_prefix(kRemove.size());
    changes.removed.emplace_back(line);
  }
}

std::vector<std::string_view> namesOf(const Changes& changes) {
  std::vector<std::string_view> names(changes.removed.begin(), changes.removed.end());
  for (const StagedFile& file : changes.replaced) {
    names.emplace_back(file.name);
  }
  return names;
}

/// Whether each is the name of a file of a database, and none comes twice.
bool areSound(const std::vector<std::string_view>& names, NameTest isKnown) {
  return std::all_of(names.begin(), names.end(), isKnown) &&
         std::set<std::string_view>(names.begin(), names.end()).size() == names.size();
}

Changes loadJournal(const OpenFolder& folder, NameTest isKnown) {
  std::optional<Changes> changes =
      changesFrom(bytesOf(folder, kJournal, kMostJournalBytes), isKnown);
  if (!changes) {
    throw runtimeError("damaged journal: {}", folder.pathOf(kJournal));
  }
  return *std::move(changes);
}

/// What was replaced already left the new file in its place.
bool isDone(const OpenFolder& folder, const StagedFile& file) {
  const bool isThere = hasFile(folder, file.name);
  const bool isStaged = hasFile(folder, file.staged);
  if (!isThere && !isStaged) {
    throw runtimeError("missing file: {}", folder.pathOf(file.staged));
  }
  return !isStaged;
}

void dropWhatIsDone(const OpenFolder& folder, Changes& changes) {
  const auto left = std::remove_if(changes.replaced.begin(), changes.replaced.end(),
                                   [&](const StagedFile& file) { return isDone(folder, file); });
  changes.replaced.erase(left, changes.replaced.end());
  for (const std::string& name : changes.removed) {
    hasFile(folder, name);  // throws when it is anything else
  }
}

void finish(const OpenFolder& folder, NameTest isKnown) {
  Changes changes = loadJournal(folder, isKnown);
  dropWhatIsDone(folder, changes);
  carryOut(folder, changes);
}

/// What an interrupted run left.
struct Remains {
  bool journal = false;
  std::vector<std::string> staged;
};

Remains remainsIn(const OpenFolder& folder) {
  Remains remains;
  for (std::string& name : namesIn(folder)) {
    if (name == kJournal) {
      remains.journal = true;
    } else if (beginsWith(name, kStagedPrefix)) {
      remains.staged.push_back(std::move(name));
    }
  }
  return remains;
}

}  // namespace

std::string stagedNameOf(std::string_view name) { return std::string(kStagedPrefix).append(name); }

bool isNamed(const Changes& changes, std::string_view name) {
  const std::vector<std::string_view> names = namesOf(changes);
  return std::find(names.begin(), names.end(), name) != names.end();
}

std::string toText(const Changes& changes) {
  std::string text(kHeader);
  for (const StagedFile& file : changes.replaced) {
    text.append(kReplace).append(file.name) += '\n';
  }
  for (const std::string& name : changes.removed) {
    text.append(kRemove).append(name) += '\n';
  }
  return text.append(kEnd);
}

std::optional<Changes> changesFrom(std::string_view text, NameTest isKnown) {
  Changes changes;
  for (const std::string& line : split(text, '\n')) {
    addLine(changes, line);
  }
  // With anything more or less in it, it is none of ours.
  if (toText(changes) != text || !areSound(namesOf(changes), isKnown)) {
    return std::nullopt;
  }
  return changes;
}

void writeJournal(const OpenFolder& folder, const Changes& changes) {
  writeFile(folder.pathOf(kStagedJournal), toText(changes));
  finishFile(folder, kStagedJournal, kJournal);
  syncNames(folder);  // the journal must not be there without what it names
  renameFile(folder, kStagedJournal, kJournal);
}

void carryOut(const OpenFolder& folder, const Changes& changes) {
  syncNames(folder);  // the journal's: a run that ended may not have come to that
  for (const StagedFile& file : changes.replaced) {
    renameFile(folder, file.staged, file.name);
  }
  for (const std::string& name : changes.removed) {
    removeFile(folder, name.c_str());
  }
  syncNames(folder);
  removeFile(folder, kJournal);
  syncNames(folder);
}

void undo(const OpenFolder& folder, const Changes& changes) noexcept {
  // The journal as well: on a disk of the network it may stand although that was said to fail.
  for (const char* const name : {kJournal, kStagedJournal}) {
    tryRemoveFile(folder, name);
  }
  for (const StagedFile& file : changes.replaced) {
    tryRemoveFile(folder, file.staged.c_str());
  }
}

bool isSettled(const OpenFolder& folder) {
  const Remains remains = remainsIn(folder);
  return !remains.journal && remains.staged.empty();
}

void settle(const OpenFolder& folder, NameTest isKnown) {
  const Remains remains = remainsIn(folder);
  try {
    if (remains.journal) {
      finish(folder, isKnown);
    }
    for (const std::string& name : remains.staged) {
      removeFile(folder, name.c_str());
    }
  } catch (const std::exception& failure) {
    throw runtimeError("an interrupted replacement waits in {}: {}", folder.path(), failure.what());
  }
}

}  // namespace quenfold::database
