#pragma once

#include <string>
#include <string_view>

#include "database/journal.h"
#include "database/open_folder.h"

namespace quenfold::database {

/// A folder that was created for a run and goes with it unless something is in it then.
class NewFolder {
 public:
  NewFolder() = default;
  /// Creates the folder unless something bears its name. Throws "error while creating
  /// folder: <path>: <reason>".
  explicit NewFolder(std::string path);
  ~NewFolder();
  NewFolder(NewFolder&& other) noexcept;
  NewFolder& operator=(NewFolder&&) = delete;
  NewFolder(const NewFolder&) = delete;
  NewFolder& operator=(const NewFolder&) = delete;

 private:
  std::string path_;  // empty when it created none
};

/// A folder that this run has a hold of: no other one changes its files meanwhile, or reads them
/// when this one changes them. The hold ends with it, or with the process however that ends. What
/// an interrupted run left behind is finished or undone before anybody gets to hold the folder.
///
/// Both ways to get one throw "folder in use: <path>", what `settle` does and the failures of
/// open_folder.h.
class HeldFolder {
 public:
  /// Others may read it as well.
  static HeldFolder forReading(const std::string& path, NameTest isKnown);

  /// For this run alone. A missing folder is created, not its parent, and goes again when nothing
  /// is put into it.
  static HeldFolder forWriting(const std::string& path, NameTest isKnown);

  [[nodiscard]] const OpenFolder& folder() const { return folder_; }
  [[nodiscard]] NameTest nameTest() const { return isKnown_; }
  [[nodiscard]] bool isForWriting() const { return lock_ == Lock::kExclusive; }

 private:
  HeldFolder(NewFolder created, const std::string& path, NameTest isKnown);

  void take(Lock lock);

  OpenFolder folder_;
  NewFolder created_;  // behind the folder: it goes while the lock is held
  NameTest isKnown_;
  Lock lock_ = Lock::kShared;
};

/// Files of one folder that change at one instant: after a `commit` that returns all of them have,
/// without one none has. Where the process or the power ends at any moment, it is one or the other
/// once the folder was held again.
class Replacement {
 public:
  /// The folder must outlive it. Throws "error while writing folder: <path>: <reason>", and a logic
  /// error for a folder that is held for reading.
  explicit Replacement(const HeldFolder& held);

  /// Without a commit takes away what was staged.
  ~Replacement();
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  /// Where the caller writes the new file, whole, before the commit. Throws a logic error for a
  /// name that is not of a database or was given before; `remove` too.
  std::string stage(std::string_view name);

  /// A file that is not there is as good as removed.
  void remove(std::string_view name);

  /// Gives each new file the permissions of the one that it replaces, and its owners where that is
  /// possible. When it throws, nothing has changed, unless the message ends in "; the next run of
  /// quenfold-db on the folder finishes it". Throws "not a regular file: <path>" when a name
  /// belongs to anything else, a symbolic link among it, and the failures of `writeFile`,
  /// open_folder.h and folder_files.h.
  void commit();

 private:
  void requireNew(std::string_view name) const;

  const HeldFolder& held_;
  Changes changes_;
  bool journalStood_ = false;
};

}  // namespace quenfold::database
