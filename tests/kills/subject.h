#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "faults/program_run.h"
#include "kills/folder_state.h"

namespace quenfold::kills {

using faults::RunResult;

/// The program and its arguments.
using Command = std::vector<std::string>;

/// What is tried: a command that replaces files of a folder, and one that does no more to it than
/// to finish or undo what an interrupted one left. Paths are seen from the current folder.
struct Subject {
  std::string shim;
  std::string folder;
  Command replace;
  Command look;
};

struct Trial {
  bool struck = false;  // whether the fault was met
  RunResult result;
  FolderState after;
};

/// One run of the command in a folder of that state; the fault as in faults/fault_plan.h, or empty.
Trial tryOut(const Subject& subject, const Command& command, const FolderState& from,
             const std::string& fault = "");

/// The trials of that command in which it is killed before its first, second ... call that changes
/// anything, until it runs through.
std::vector<Trial> tryKills(const Subject& subject, const Command& command,
                            const FolderState& from);

enum class Side { kOld, kNew };

/// What a folder is to hold: all that it did before, or all that it does after the replacement.
class Verdict {
 public:
  /// Throws a runtime error unless the replacement, undisturbed, succeeds and changes something.
  Verdict(const Subject& subject, const FolderState& before);

  [[nodiscard]] const FolderState& oldState() const { return old_; }
  [[nodiscard]] const FolderState& newState() const { return new_; }

  /// Whether the folder holds all the old files, or all the new ones, and nothing else. A folder
  /// that is missing holds no files.
  [[nodiscard]] bool is(const FolderState& state, Side side) const;
  [[nodiscard]] bool isWhole(const FolderState& state) const;

  /// What a folder of that state is after it was looked at. Throws a runtime error, with `how` it
  /// came to that state, when it is not whole then.
  Side sideOf(const FolderState& state, std::string_view how);

 private:
  Subject subject_;
  FolderState old_;
  FolderState new_;
  std::map<FolderState, Side> known_;
};

}  // namespace quenfold::kills
