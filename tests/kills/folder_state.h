#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <tuple>

namespace quenfold::kills {

struct FileState {
  std::string bytes;
  unsigned permissions = 0644;
};

inline bool operator==(const FileState& a, const FileState& b) {
  return std::tie(a.bytes, a.permissions) == std::tie(b.bytes, b.permissions);
}
inline bool operator<(const FileState& a, const FileState& b) {
  return std::tie(a.bytes, a.permissions) < std::tie(b.bytes, b.permissions);
}

/// All that a folder of files holds.
struct FolderState {
  bool exists = false;
  std::map<std::string, FileState> files;  // by name
};

inline bool operator==(const FolderState& a, const FolderState& b) {
  return std::tie(a.exists, a.files) == std::tie(b.exists, b.files);
}
inline bool operator<(const FolderState& a, const FolderState& b) {
  return std::tie(a.exists, a.files) < std::tie(b.exists, b.files);
}

FolderState stateOf(const std::filesystem::path& folder);

/// Makes the folder hold just that.
void restore(const FolderState& state, const std::filesystem::path& folder);

/// For messages: a line a file.
std::string describe(const FolderState& state);

}  // namespace quenfold::kills
