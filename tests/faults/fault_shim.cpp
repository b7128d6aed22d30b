// Preloaded into the program, lets one call of the C library fail; see fault_plan.h. Faults begin
// and end with main: what the loader and the libraries' own start need cannot be survived by any
// program, and after main only a coverage build still works, which writes its counters to a file.

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>

#include "faults/fault_strike.h"

// The names are the C library's, with its signatures.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier,readability-identifier-naming,*-no-malloc,*-vararg,readability-function-size)

using namespace quenfold::faults;

namespace {

template <typename Function>
Function next(Function /*self*/, const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int opened(int folder, const char* path, int flags, mode_t mode) {
  return strikesAt("open", folder, path) ? -1 : next(&openat, "openat")(folder, path, flags, mode);
}

using Main = int (*)(int, char**, char**);
Main programMain = nullptr;

int armedMain(int argc, char** argv, char** environment) {
  arm();
  const int status = programMain(argc, argv, environment);
  disarm();
  return status;
}

}  // namespace

extern "C" {

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);
int __libc_start_main(Main start, int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*atLoaderEnd)(), void* stackEnd);
ssize_t __read_chk(int descriptor, void* buffer, size_t size, size_t room);

int __libc_start_main(Main start, int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*atLoaderEnd)(), void* stackEnd) {
  programMain = start;
  return next(&__libc_start_main, "__libc_start_main")(armedMain, argc, argv, init, fini,
                                                       atLoaderEnd, stackEnd);
}

void* malloc(size_t size) { return strikesAllocation(size) ? nullptr : __libc_malloc(size); }

void* calloc(size_t count, size_t size) {
  return strikesAllocation(count * size) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, size_t size) {
  return strikesAllocation(size) ? nullptr : __libc_realloc(memory, size);
}

int open(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = va_arg(arguments, mode_t);
  va_end(arguments);
  return opened(AT_FDCWD, path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = va_arg(arguments, mode_t);
  va_end(arguments);
  return opened(AT_FDCWD, path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = va_arg(arguments, mode_t);
  va_end(arguments);
  return opened(folder, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = va_arg(arguments, mode_t);
  va_end(arguments);
  return opened(folder, path, flags, mode);
}

ssize_t read(int descriptor, void* buffer, size_t size) {
  const ssize_t granted = grantedSize("read", descriptor, size);
  return granted < 0 ? -1 : syscall(SYS_read, descriptor, buffer, granted);
}

/// Fortified builds call this one.
ssize_t __read_chk(int descriptor, void* buffer, size_t size, size_t /*room*/) {
  return read(descriptor, buffer, size);
}

ssize_t write(int descriptor, const void* buffer, size_t size) {
  const ssize_t granted = grantedSize("write", descriptor, size);
  return granted < 0 ? -1 : syscall(SYS_write, descriptor, buffer, granted);
}

/// The descriptor is closed all the same, as the system does.
int close(int descriptor) {
  const bool fails = strikes("close", descriptor);
  const int error = errno;
  const long result = syscall(SYS_close, descriptor);
  errno = fails ? error : errno;
  return fails ? -1 : static_cast<int>(result);
}

int stat(const char* path, struct stat* status) {
  return strikes("stat", path) ? -1 : next(&stat, "stat")(path, status);
}

int stat64(const char* path, struct stat64* status) {
  return strikes("stat", path) ? -1 : next(&stat64, "stat64")(path, status);
}

int fstat(int descriptor, struct stat* status) {
  return strikes("stat", descriptor) ? -1 : next(&fstat, "fstat")(descriptor, status);
}

int fstat64(int descriptor, struct stat64* status) {
  return strikes("stat", descriptor) ? -1 : next(&fstat64, "fstat64")(descriptor, status);
}

int fstatat(int folder, const char* path, struct stat* status, int flags) {
  return strikesAt("stat", folder, path) ? -1
                                         : next(&fstatat, "fstatat")(folder, path, status, flags);
}

int fstatat64(int folder, const char* path, struct stat64* status, int flags) {
  return strikesAt("stat", folder, path)
             ? -1
             : next(&fstatat64, "fstatat64")(folder, path, status, flags);
}

int mkdir(const char* path, mode_t mode) {
  return strikes("mkdir", path) ? -1 : next(&mkdir, "mkdir")(path, mode);
}

int rmdir(const char* path) { return strikes("rmdir", path) ? -1 : next(&rmdir, "rmdir")(path); }

int flock(int descriptor, int operation) {
  return strikes("flock", descriptor) ? -1 : next(&flock, "flock")(descriptor, operation);
}

/// Nobody cuts the power of a test, and disks are slow.
int fsync(int descriptor) { return strikes("sync", descriptor) ? -1 : 0; }

int fchmod(int descriptor, mode_t mode) {
  return strikes("chmod", descriptor) ? -1 : next(&fchmod, "fchmod")(descriptor, mode);
}

int fchown(int descriptor, uid_t user, gid_t group) {
  return strikes("chown", descriptor) ? -1 : next(&fchown, "fchown")(descriptor, user, group);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) {
  return strikesAt("rename", fromFolder, from, to)
             ? -1
             : next(&renameat, "renameat")(fromFolder, from, toFolder, to);
}

int unlinkat(int folder, const char* path, int flags) {
  return strikesAt("unlink", folder, path) ? -1 : next(&unlinkat, "unlinkat")(folder, path, flags);
}

DIR* fdopendir(int descriptor) {
  return strikes("list", descriptor) ? nullptr : next(&fdopendir, "fdopendir")(descriptor);
}

struct dirent* readdir(DIR* folder) {
  return strikes("list", dirfd(folder)) ? nullptr : next(&readdir, "readdir")(folder);
}

struct dirent64* readdir64(DIR* folder) {
  return strikes("list", dirfd(folder)) ? nullptr : next(&readdir64, "readdir64")(folder);
}
}

// NOLINTEND(clang-diagnostic-reserved-identifier,readability-identifier-naming,*-no-malloc,*-vararg,readability-function-size)
