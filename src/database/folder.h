#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/file_set.h"

namespace quenfold::database {

enum class Form { kLegacy, kPacked };

std::string_view formName(Form form);

/// A database on disk.
struct Folder {
  std::string path;
  Form form = Form::kLegacy;
};

/// The folder that an argument "PATH", "legacy:PATH" or "packed:PATH" names. Throws "no such
/// folder: <path>" and "not a folder: <path>".
std::string folderOf(std::string_view argument);

/// The database that such an argument names, in a folder that is held: what an interrupted run left
/// may hide it. A folder is packed when it holds "dbpack_matrices.json" and legacy when it holds
/// "matrices.json"; where both are there the argument must tell. Throws "no database in <path>",
/// "no legacy database in <path>" (or packed) and "<path> holds a legacy and a packed database: say
/// legacy:<path> or packed:<path>".
Folder findDatabase(std::string_view argument);

/// The path of an argument for a database that is to be of that form, whether it is there or not.
/// Throws "not a <form> database: <argument>" for one that says otherwise.
std::string pathFor(std::string_view argument, Form form);

/// False for what is missing; what cannot be told counts as there, and reading it says why.
bool isThere(const std::string& path);

/// The names of all files that a database of that form may have.
std::vector<std::string> fileNames(Form form);

/// Whether a database of any form may have a file of that name.
bool isDatabaseFile(std::string_view name);

/// Those of the names that are in the folder.
std::vector<std::string> filesIn(const Folder& folder);

/// The texts of the folder's files of a packed database. Throws what `readFile` throws.
FileTexts readPackedFiles(const std::string& path);

}  // namespace quenfold::database
