#include "kills/disk.h"

#include <filesystem>
#include <utility>

namespace quenfold::kills {
namespace {

std::string nameIn(const std::string& path) { return std::filesystem::path(path).filename(); }

void apply(std::map<std::string, std::size_t>& names, const std::string& removed,
           const std::string& added, std::size_t file) {
  if (!removed.empty()) {
    names.erase(removed);
  }
  if (!added.empty()) {
    names[added] = file;
  }
}

}  // namespace

Disk::Disk(std::string folder, const FolderState& state)
    : folder_(std::move(folder)), exists_(state.exists), existsForSure_(state.exists) {
  for (const auto& [name, file] : state.files) {
    synced_[name] = files_.size();
    files_.push_back({file, true});
  }
  seen_ = synced_;
}

bool Disk::apply(const Event& event, const FolderState& after) {
  const bool folder = changeFolder(after);
  const bool names = changeNames(event, after);
  const bool contents = changeContents(after);
  return (event.kind == "sync" && sync(event.path)) || folder || names || contents;
}

bool Disk::changeFolder(const FolderState& after) {
  return std::exchange(exists_, after.exists) != after.exists;
}

bool Disk::changeNames(const Event& event, const FolderState& after) {
  const std::string name = nameIn(event.path);
  const auto found = seen_.find(name);
  const bool was = found != seen_.end();
  const bool is = after.files.count(name) != 0;
  if (was && !is) {
    take({name, event.to, found->second});
  } else if (!was && is) {
    files_.emplace_back();
    take({"", name, files_.size() - 1});
  }
  return was != is;
}

void Disk::take(const Step& step) {
  pending_.push_back(step);
  kills::apply(seen_, step.removed, step.added, step.file);
}

bool Disk::changeContents(const FolderState& after) {
  bool changed = false;
  for (const auto& [name, state] : after.files) {
    Contents& contents = files_[seen_.at(name)];
    if (!(contents.state == state)) {
      contents = {state, false};
      changed = true;
    }
  }
  return changed;
}

bool Disk::sync(std::string_view path) {
  if (path == folder_) {
    synced_ = seen_;
    return !std::exchange(pending_, {}).empty();
  }
  const std::filesystem::path file(path);
  if (file == std::filesystem::absolute(folder_).parent_path()) {
    return std::exchange(existsForSure_, exists_) != exists_;
  }
  const auto found = file.parent_path() == folder_ ? seen_.find(file.filename()) : seen_.end();
  return found != seen_.end() && !std::exchange(files_[found->second].synced, true);
}

std::set<FolderState> Disk::statesWithoutPower() const {
  std::set<FolderState> states;
  if (!exists_ || !existsForSure_) {
    states.insert(FolderState());
  }
  for (unsigned chosen = 0; exists_ && chosen < 1U << pending_.size(); ++chosen) {
    Names names = synced_;
    for (std::size_t i = 0; i < pending_.size(); ++i) {
      if ((chosen >> i & 1U) != 0) {
        kills::apply(names, pending_[i].removed, pending_[i].added, pending_[i].file);
      }
    }
    states.insert(stateOf(names, false));
    states.insert(stateOf(names, true));
  }
  return states;
}

FolderState Disk::stateOf(const Names& names, bool unsyncedBytes) const {
  FolderState state;
  state.exists = true;
  for (const auto& [name, file] : names) {
    FileState& there = state.files[name] = files_[file].state;
    if (!files_[file].synced && !unsyncedBytes) {
      there.bytes.clear();
    }
  }
  return state;
}

}  // namespace quenfold::kills
