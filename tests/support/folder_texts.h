#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>

#include "support/scratch.h"

namespace quenfold::test {

/// The names in a folder, and the bytes of what is a file or "(link)", "(folder)", "(other)".
using FolderTexts = std::map<std::string, std::string>;

inline std::string textOf(const std::filesystem::directory_entry& entry) {
  if (entry.is_symlink()) {
    return "(link)";
  }
  if (entry.is_directory()) {
    return "(folder)";
  }
  if (!entry.is_regular_file()) {
    return "(other)";
  }
  std::ostringstream bytes;
  bytes << std::ifstream(entry.path(), std::ios::binary).rdbuf();
  return bytes.str();
}

inline FolderTexts textsIn(const ScratchFolder& folder) {
  FolderTexts texts;
  for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
    texts[entry.path().filename()] = textOf(entry);
  }
  return texts;
}

inline void putTexts(const ScratchFolder& folder, const FolderTexts& texts) {
  for (const auto& [name, text] : texts) {
    static_cast<void>(folder.file(name, text));
  }
}

/// What the folder of a database with these three names holds before its files are replaced, and
/// after.
inline bool isKnown(std::string_view name) {
  return name == "a.json" || name == "b.json" || name == "c.json";
}
inline const FolderTexts kOld = {
    {"a.json", "old a"}, {"c.json", "old c"}, {"notes", "no database"}};
inline const FolderTexts kNew = {
    {"a.json", "new a"}, {"b.json", "new b"}, {"notes", "no database"}};

/// The permissions of a file, as chmod takes them.
inline unsigned permissionsOf(const std::string& path) {
  return static_cast<unsigned>(std::filesystem::status(path).permissions());
}

inline void setPermissions(const std::string& path, unsigned permissions) {
  std::filesystem::permissions(path, std::filesystem::perms{permissions});
}

}  // namespace quenfold::test
