// Preloaded into the program, makes the time of the system clock a count of what the program did:
//
//   each reading of the clock                                                      1 ms
//   each line written to standard error                                          100 ms
//   each file closed, end of standard input, piece written to standard output 10,000 ms
//
// So the milliseconds of a stage tell what lies between its two readings: 30207 are three files,
// two lines and seven readings, the one for the report among them.

#include <dlfcn.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <ctime>

namespace {

// Times are whole milliseconds behind a start of some time in 2001.
constexpr std::int64_t kStartSeconds = 1000000000;
constexpr std::int64_t kReading = 1;
constexpr std::int64_t kLine = 100;
constexpr std::int64_t kFile = 10000;

std::int64_t elapsed = 0;

void countLines(const void* bytes, size_t size, FILE* stream) {
  const auto* const text = static_cast<const char*>(bytes);
  for (size_t index = 0; stream == stderr && index < size; ++index) {
    elapsed += text[index] == '\n' ? kLine : 0;
  }
}

template <typename Function>
Function next(Function /*self*/, const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// The names are the C library's, with its signatures.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier,readability-identifier-naming)
extern "C" {

ssize_t __read_chk(int descriptor, void* buffer, size_t size, size_t room);

int clock_gettime(clockid_t clock, struct timespec* time) {
  if (clock != CLOCK_REALTIME) {
    return static_cast<int>(syscall(SYS_clock_gettime, clock, time));
  }
  elapsed += kReading;
  time->tv_sec = kStartSeconds + elapsed / 1000;
  time->tv_nsec = elapsed % 1000 * 1000000;
  return 0;
}

/// The C++ library writes texts to standard error with this one and single characters with `putc`.
size_t fwrite(const void* bytes, size_t size, size_t count, FILE* stream) {
  countLines(bytes, size * count, stream);
  return next(&fwrite, "fwrite")(bytes, size, count, stream);
}

int putc(int character, FILE* stream) {
  const char byte = static_cast<char>(character);
  countLines(&byte, 1, stream);
  return next(&putc, "putc")(character, stream);
}

int close(int descriptor) {
  elapsed += kFile;
  return static_cast<int>(syscall(SYS_close, descriptor));
}

ssize_t read(int descriptor, void* buffer, size_t size) {
  const ssize_t count = syscall(SYS_read, descriptor, buffer, size);
  elapsed += descriptor == STDIN_FILENO && count == 0 ? kFile : 0;
  return count;
}

/// Fortified builds call this one.
ssize_t __read_chk(int descriptor, void* buffer, size_t size, size_t /*room*/) {
  return read(descriptor, buffer, size);
}

ssize_t write(int descriptor, const void* buffer, size_t size) {
  elapsed += descriptor == STDOUT_FILENO ? kFile : 0;
  return syscall(SYS_write, descriptor, buffer, size);
}
}
// NOLINTEND(clang-diagnostic-reserved-identifier,readability-identifier-naming)
