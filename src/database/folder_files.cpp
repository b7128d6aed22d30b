#include "database/folder_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

#include "app/error.h"
#include "app/system_call.h"

namespace quenfold::database {
namespace {

int openFile(const OpenFolder& folder, const std::string& name) {
  constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  const int at = folder.descriptor();
  const int descriptor =
      uninterrupted([&] { return openat(at, name.c_str(), kFlags); });  // NOLINT(*-vararg)
  if (descriptor == kFailed) {
    throw systemError("error while opening file: {}", folder.pathOf(name));
  }
  return descriptor;
}

/// Whether there is something of that name.
bool getStatus(const OpenFolder& folder, const std::string& name, struct stat& status) {
  if (fstatat(folder.descriptor(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
    return true;
  }
  if (errno == ENOENT) {
    return false;
  }
  throw systemError("error while opening file: {}", folder.pathOf(name));
}

/// Whether the file has them. Its owners are tried only: none but the superuser gives files away,
/// and who may replace another's file makes it his own.
bool gavePermissions(int file, const struct stat& wanted) {
  constexpr mode_t kPermissions = 0777;
  constexpr auto kSameUser = static_cast<uid_t>(-1);
  constexpr auto kSameGroup = static_cast<gid_t>(-1);
  static_cast<void>(fchown(file, kSameUser, wanted.st_gid) == 0);
  static_cast<void>(fchown(file, wanted.st_uid, kSameGroup) == 0);
  return fchmod(file, wanted.st_mode & kPermissions) == 0;
}

}  // namespace

bool hasFile(const OpenFolder& folder, const std::string& name) {
  struct stat status = {};
  if (!getStatus(folder, name, status)) {
    return false;
  }
  if (!S_ISREG(status.st_mode)) {
    throw runtimeError("not a regular file: {}", folder.pathOf(name));
  }
  return true;
}

std::string bytesOf(const OpenFolder& folder, const std::string& name, std::size_t most) {
  const Descriptor file(openFile(folder, name));
  std::string bytes(most, '\0');
  std::size_t used = 0;
  ssize_t count = 1;
  while (count > 0 && used < most) {
    count = uninterrupted([&] { return read(file.get(), bytes.data() + used, most - used); });
    if (count < 0) {
      throw systemError("error while reading file: {}", folder.pathOf(name));
    }
    used += static_cast<std::size_t>(count);
  }
  bytes.resize(used);
  return bytes;
}

void finishFile(const OpenFolder& folder, const std::string& name, const std::string& place) {
  struct stat wanted = {};
  const bool replaces = getStatus(folder, place, wanted);
  const Descriptor file(openFile(folder, name));
  if ((replaces && !gavePermissions(file.get(), wanted)) ||
      uninterrupted([&] { return fsync(file.get()); }) == kFailed) {
    throw systemError("error while writing file: {}", folder.pathOf(name));
  }
}

void renameFile(const OpenFolder& folder, const std::string& from, const std::string& to) {
  const int at = folder.descriptor();
  const int result = uninterrupted([&] { return renameat(at, from.c_str(), at, to.c_str()); });
  if (result == kFailed) {
    throw systemError("error while renaming file: {}", folder.pathOf(from));
  }
}

void removeFile(const OpenFolder& folder, const char* name) {
  if (!tryRemoveFile(folder, name)) {
    throw systemError("error while removing file: {}", folder.pathOf(name));
  }
}

bool tryRemoveFile(const OpenFolder& folder, const char* name) noexcept {
  return uninterrupted([&] { return unlinkat(folder.descriptor(), name, 0); }) == 0 ||
         errno == ENOENT;
}

}  // namespace quenfold::database
