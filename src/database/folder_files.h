#pragma once

#include <cstddef>
#include <string>

#include "database/open_folder.h"

namespace quenfold::database {

/// Whether there is such a file. Throws "not a regular file: <path>" for anything else of that
/// name, a symbolic link among it, and "error while opening file" when it cannot be told.
bool hasFile(const OpenFolder& folder, const std::string& name);

/// The bytes of a file, at most so many of them. Follows no link and waits for no pipe. Throws
/// "error while opening file" or "error while reading file".
std::string bytesOf(const OpenFolder& folder, const std::string& name, std::size_t most);

/// Prepares a file to take the place of another: it gets the permissions of that one, if there is
/// one, and its owners as far as the system lets, and is on the disk afterwards, though its name
/// may not be. Throws "error while opening file" or "error while writing file".
void finishFile(const OpenFolder& folder, const std::string& name, const std::string& place);

/// Takes away what bears the other name. Throws "error while renaming file".
void renameFile(const OpenFolder& folder, const std::string& from, const std::string& to);

/// A file that is missing is not removed. Throws "error while removing file".
void removeFile(const OpenFolder& folder, const char* name);

/// The same; whether there is no such file any more.
bool tryRemoveFile(const OpenFolder& folder, const char* name) noexcept;

}  // namespace quenfold::database
