#include "database/staging.h"

#include <unistd.h>

#include <exception>
#include <stdexcept>
#include <utility>

#include "app/error.h"
#include "database/folder_files.h"

namespace quenfold::database {

NewFolder::NewFolder(std::string path) : path_(std::move(path)) {
  if (!createFolder(path_)) {
    path_.clear();
  }
}

NewFolder::~NewFolder() {
  if (!path_.empty()) {
    rmdir(path_.c_str());  // fails when something is in it
  }
}

NewFolder::NewFolder(NewFolder&& other) noexcept : path_(std::exchange(other.path_, {})) {}

HeldFolder::HeldFolder(NewFolder created, const std::string& path, NameTest isKnown)
    : folder_(path), created_(std::move(created)), isKnown_(isKnown) {}

HeldFolder HeldFolder::forReading(const std::string& path, NameTest isKnown) {
  HeldFolder held(NewFolder(), path, isKnown);
  held.take(Lock::kShared);
  // Again, because a lock is not exchanged for another in one step.
  while (!isSettled(held.folder_)) {
    held.take(Lock::kExclusive);
    settle(held.folder_, isKnown);
    held.take(Lock::kShared);
  }
  return held;
}

HeldFolder HeldFolder::forWriting(const std::string& path, NameTest isKnown) {
  HeldFolder held(NewFolder(path), path, isKnown);
  held.take(Lock::kExclusive);
  settle(held.folder_, isKnown);
  // Who created the folder may have been killed before it was on the disk.
  syncNamesBeside(held.folder_);
  return held;
}

void HeldFolder::take(Lock lock) {
  // The path may lead elsewhere by the time the lock is there.
  if (!tryLock(folder_, lock) || !isAt(folder_, folder_.path())) {
    throw runtimeError("folder in use: {}", folder_.path());
  }
  lock_ = lock;
}

Replacement::Replacement(const HeldFolder& held) : held_(held) {
  if (!held.isForWriting()) {
    throw std::logic_error("held for reading: " + held.folder().path());
  }
  // A journal that was carried out must not come back with the power and find what is staged now.
  syncNames(held.folder());
}

Replacement::~Replacement() {
  if (!journalStood_) {
    undo(held_.folder(), changes_);
  }
}

std::string Replacement::stage(std::string_view name) {
  requireNew(name);
  changes_.replaced.push_back({std::string(name), stagedNameOf(name)});
  return held_.folder().pathOf(changes_.replaced.back().staged);
}

void Replacement::remove(std::string_view name) {
  requireNew(name);
  changes_.removed.emplace_back(name);
}

void Replacement::commit() {
  const OpenFolder& folder = held_.folder();
  for (const std::string& name : changes_.removed) {
    hasFile(folder, name);  // throws when it is anything else
  }
  for (const StagedFile& file : changes_.replaced) {
    hasFile(folder, file.name);
    finishFile(folder, file.staged, file.name);
  }
  writeJournal(folder, changes_);
  journalStood_ = true;
  try {
    carryOut(folder, changes_);
  } catch (const std::exception& failure) {
    throw runtimeError("{}; the next run of quenfold-db on the folder finishes it", failure.what());
  }
}

void Replacement::requireNew(std::string_view name) const {
  if (!held_.nameTest()(name) || isNamed(changes_, name)) {
    throw std::logic_error("not to be replaced: " + std::string(name));
  }
}

}  // namespace quenfold::database
