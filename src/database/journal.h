#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/open_folder.h"

// How several files of a folder change at one instant. Each new file is written beside the one that
// it replaces, as ".quenfold-db.new.<name>". Then a journal that names them appears, whole, by one
// rename:
//
//   quenfold-db journal 1
//   replace dbpack_matrices.json
//   remove logicalSourcesPorts.json
//   end
//
// That is the instant: without a journal the staged files are what nobody wants any more; with one
// they are what the folder is to hold, and whoever comes next finishes what was begun. It goes when
// all is done. Each of these steps is on the disk before the next is begun.

namespace quenfold::database {

/// Whether a database has a file of that name.
using NameTest = bool (*)(std::string_view name);

/// Where the file is written that is to replace the one of that name.
std::string stagedNameOf(std::string_view name);

struct StagedFile {
  std::string name;    // of the file that it replaces
  std::string staged;  // of itself
};

/// What happens to a folder at one instant. No name occurs twice.
struct Changes {
  std::vector<StagedFile> replaced;
  std::vector<std::string> removed;
};

bool isNamed(const Changes& changes, std::string_view name);

/// The journal.
std::string toText(const Changes& changes);

/// Nothing unless the text is a journal as `toText` gives it, of names that pass the test.
std::optional<Changes> changesFrom(std::string_view text, NameTest isKnown);

// The folder is locked for all that follows. Failures are those of `writeFile` and of the functions
// in open_folder.h and folder_files.h, and those named.

/// Makes the journal stand. When it throws, `undo` is due.
void writeJournal(const OpenFolder& folder, const Changes& changes);

/// Does what the standing journal says and takes it away. When it throws, `settle` is due. Needs no
/// memory unless it fails.
void carryOut(const OpenFolder& folder, const Changes& changes);

/// Takes away what was staged for changes that are not to be, as far as the system lets.
void undo(const OpenFolder& folder, const Changes& changes) noexcept;

/// Whether no interrupted run left anything in the folder.
bool isSettled(const OpenFolder& folder);

/// Does what a standing journal says, or takes the staged files away when there is none. A journal
/// that cannot be carried out to its end is not begun. Throws "an interrupted replacement waits in
/// <path>: " and why: "damaged journal: <path>", "missing file: <path>", "not a regular file:
/// <path>" or a failure.
void settle(const OpenFolder& folder, NameTest isKnown);

}  // namespace quenfold::database
