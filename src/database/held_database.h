#pragma once

#include <string_view>

#include "database/folder.h"
#include "database/staging.h"

namespace quenfold::database {

/// A database that nobody changes as long as this lives.
class HeldDatabase {
 public:
  /// Of an argument as for `findDatabase`. Throws what `folderOf`, `HeldFolder::forReading` and
  /// `findDatabase` throw, in that order.
  explicit HeldDatabase(std::string_view argument)
      : held_(HeldFolder::forReading(folderOf(argument), isDatabaseFile)),
        folder_(findDatabase(argument)) {}

  [[nodiscard]] const Folder& folder() const { return folder_; }

 private:
  HeldFolder held_;  // before the folder is looked at
  Folder folder_;
};

}  // namespace quenfold::database
