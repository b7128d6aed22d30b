#include "database/open_folder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

#include "app/error.h"
#include "app/files.h"
#include "app/system_call.h"

namespace quenfold::database {
namespace {

/// `path` is seen from the folder `at`, or from the current one for `AT_FDCWD`.
int tryOpenFolder(int at, const char* path) {
  constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
  return uninterrupted([&] { return openat(at, path, kFlags); });  // NOLINT(*-vararg)
}

/// The same; `name` is for the message.
int openFolder(int at, const char* path, const std::string& name) {
  const int descriptor = tryOpenFolder(at, path);
  if (descriptor == kFailed) {
    throw systemError("error while opening folder: {}", name);
  }
  return descriptor;
}

void syncFolder(int descriptor, const std::string& path) {
  const int result = uninterrupted([&] { return fsync(descriptor); });
  // EINVAL is the answer of a file system that has no such thing for folders.
  if (result == kFailed && errno != EINVAL) {
    throw systemError("error while writing folder: {}", path);
  }
}

using Listing = std::unique_ptr<DIR, int (*)(DIR*)>;

Listing listingOf(const OpenFolder& folder) {
  const int descriptor = openFolder(folder.descriptor(), ".", folder.path());
  Listing listing(fdopendir(descriptor), closedir);
  if (listing == nullptr) {
    const Descriptor closed(descriptor);
    throw systemError("error while reading folder: {}", folder.path());
  }
  return listing;
}

}  // namespace

OpenFolder::OpenFolder(std::string path)
    : path_(std::move(path)), descriptor_(openFolder(AT_FDCWD, path_.c_str(), path_)) {}

OpenFolder::~OpenFolder() {
  if (descriptor_ != kFailed) {
    close(descriptor_);
  }
}

OpenFolder::OpenFolder(OpenFolder&& other) noexcept
    : path_(std::move(other.path_)), descriptor_(std::exchange(other.descriptor_, kFailed)) {}

std::string OpenFolder::pathOf(std::string_view name) const { return joinPath(path_, name); }

bool createFolder(const std::string& path) {
  constexpr mode_t kEverybody = 0777;  // less the umask
  if (uninterrupted([&] { return mkdir(path.c_str(), kEverybody); }) == 0) {
    return true;
  }
  if (errno == EEXIST) {
    return false;
  }
  throw systemError("error while creating folder: {}", path);
}

bool isAt(const OpenFolder& folder, const std::string& path) {
  struct stat here = {};
  struct stat there = {};
  if (fstat(folder.descriptor(), &here) != 0) {
    throw systemError("error while opening folder: {}", folder.path());
  }
  return stat(path.c_str(), &there) == 0 && here.st_dev == there.st_dev &&
         here.st_ino == there.st_ino;
}

bool tryLock(const OpenFolder& folder, Lock lock) {
  const int kind = lock == Lock::kShared ? LOCK_SH : LOCK_EX;
  if (uninterrupted([&] { return flock(folder.descriptor(), kind | LOCK_NB); }) == 0) {
    return true;
  }
  if (errno == EWOULDBLOCK) {
    return false;
  }
  throw systemError("error while locking folder: {}", folder.path());
}

std::vector<std::string> namesIn(const OpenFolder& folder) {
  const Listing listing = listingOf(folder);
  std::vector<std::string> names;
  const dirent* entry = nullptr;
  do {
    errno = 0;
    entry = readdir(listing.get());  // NOLINT(*-mt-unsafe)
    if (entry != nullptr) {
      names.emplace_back(entry->d_name);
    }
  } while (entry != nullptr);
  if (errno != 0) {
    throw systemError("error while reading folder: {}", folder.path());
  }
  return names;
}

void syncNames(const OpenFolder& folder) { syncFolder(folder.descriptor(), folder.path()); }

void syncNamesBeside(const OpenFolder& folder) {
  constexpr const char* kParent = "..";
  const std::string path = folder.pathOf(kParent);
  const int descriptor = tryOpenFolder(folder.descriptor(), kParent);
  if (descriptor == kFailed) {
    if (errno == EACCES) {
      return;
    }
    throw systemError("error while opening folder: {}", path);
  }
  const Descriptor parent(descriptor);
  syncFolder(parent.get(), path);
}

}  // namespace quenfold::database
