#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "kills/folder_state.h"

namespace quenfold::kills {

/// A system call as the preloaded library tells it.
struct Event {
  std::string path;
  std::string kind;
  std::string to;  // the new name, in a rename
};

/// What a folder is on the disk, as far as a program may rely on it: a file holds what it did when
/// it was synced last, and a name is there or not as when its folder was synced last. What happened
/// since may be on the disk or not, each for itself: a rename wholly or not at all, the bytes of a
/// file or nothing of them.
class Disk {
 public:
  /// All of it has been on the disk for long.
  Disk(std::string folder, const FolderState& state);

  /// The call took the folder into that state. False when nothing changed on the disk or for it.
  bool apply(const Event& event, const FolderState& after);

  /// All that the folder may be after the power was cut.
  [[nodiscard]] std::set<FolderState> statesWithoutPower() const;

 private:
  using File = std::size_t;  // an index of `files_`
  using Names = std::map<std::string, File>;

  struct Contents {
    FileState state;
    bool synced = false;
  };

  /// A file gets a name, loses one, or both.
  struct Step {
    std::string removed;
    std::string added;
    File file = 0;
  };

  bool changeFolder(const FolderState& after);
  bool changeNames(const Event& event, const FolderState& after);
  bool changeContents(const FolderState& after);
  bool sync(std::string_view path);
  void take(const Step& step);
  [[nodiscard]] FolderState stateOf(const Names& names, bool unsyncedBytes) const;

  std::string folder_;
  bool exists_;         // for programs
  bool existsForSure_;  // on the disk
  std::vector<Contents> files_;
  Names seen_;    // what programs see
  Names synced_;  // what surely is on the disk
  std::vector<Step> pending_;
};

}  // namespace quenfold::kills
