#include "kills/folder_state.h"

#include <fmt/core.h>

#include <fstream>
#include <sstream>

namespace quenfold::kills {

namespace fs = std::filesystem;

FolderState stateOf(const fs::path& folder) {
  FolderState state;
  state.exists = fs::is_directory(folder);
  if (!state.exists) {
    return state;
  }
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    std::ostringstream bytes;
    bytes << std::ifstream(entry.path(), std::ios::binary).rdbuf();
    state.files[entry.path().filename()] = {bytes.str(),
                                            static_cast<unsigned>(entry.status().permissions())};
  }
  return state;
}

void restore(const FolderState& state, const fs::path& folder) {
  fs::remove_all(folder);
  if (state.exists) {
    fs::create_directory(folder);
  }
  for (const auto& [name, file] : state.files) {
    std::ofstream(folder / name, std::ios::binary) << file.bytes;
    fs::permissions(folder / name, fs::perms{file.permissions});
  }
}

std::string describe(const FolderState& state) {
  std::string text = state.exists ? "" : "  no folder\n";
  for (const auto& [name, file] : state.files) {
    text += fmt::format("  {} ({:o}): \"{}\"\n", name, file.permissions, file.bytes);
  }
  return text;
}

}  // namespace quenfold::kills
