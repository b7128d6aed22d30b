#include "faults/fault_strike.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "faults/fault_plan.h"

namespace quenfold::faults {
namespace {

struct Fault {
  std::array<char, 16> call{};
  unsigned long first = 0;
  unsigned long times = 0;
  int error = 0;
};

Fault fault;
bool armed = false;
unsigned long calls = 0;
int marks = 0;
bool tracing = false;

void readPlan() {
  const char* const plan = std::getenv(kFaultVariable);
  std::array<char, 16> times{};
  if (plan == nullptr || std::sscanf(plan, "%15s %lu %15s %d", fault.call.data(), &fault.first,
                                     times.data(), &fault.error) != 4) {
    std::abort();
  }
  tracing = std::strcmp(plan, kTrace) == 0;
  const bool on = std::strcmp(times.data(), "on") == 0;
  fault.times = on ? ULONG_MAX : std::strtoul(times.data(), nullptr, 10);
}

/// A line that is put together without allocating.
class Line {
 public:
  void add(const char* text) {
    const std::size_t length = strnlen(text, bytes_.size() - 1 - used_);
    std::memcpy(bytes_.data() + used_, text, length);
    used_ += length;
  }
  /// The path that the descriptor was opened by.
  void addPathOf(int descriptor) {
    std::array<char, 32> link{};
    std::array<char, PATH_MAX> path{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
    if (readlink(link.data(), path.data(), path.size() - 1) < 0) {
      std::abort();
    }
    add(path.data());
  }
  /// One write, so that a line is never torn.
  void mark() {
    bytes_.at(used_++) = '\n';
    syscall(SYS_write, kMarkDescriptor, bytes_.data(), used_);
  }

 private:
  std::array<char, std::size_t{2} * PATH_MAX> bytes_{};
  std::size_t used_ = 0;
};

/// What a call is about: a path from a folder, or a descriptor alone.
struct Subject {
  int descriptor = AT_FDCWD;
  const char* path = nullptr;
  const char* to = nullptr;
};

Line lineOf(const Subject& subject) {
  Line line;
  if (subject.descriptor == STDIN_FILENO || subject.descriptor == STDOUT_FILENO) {
    line.add(subject.descriptor == STDIN_FILENO ? "standard input" : "standard output");
  } else if (subject.descriptor != AT_FDCWD && (subject.path == nullptr || *subject.path != '/')) {
    line.addPathOf(subject.descriptor);
    line.add(subject.path == nullptr ? "" : "/");
  }
  line.add(subject.path == nullptr ? "" : subject.path);
  return line;
}

void trace(const char* call, const Subject& subject) {
  Line line = lineOf(subject);
  line.add("\t");
  line.add(call);
  if (subject.to != nullptr) {
    line.add("\t");
    line.add(subject.to);
  }
  line.mark();
}

bool isOneOf(const char* call, std::initializer_list<const char*> kinds) {
  return std::any_of(kinds.begin(), kinds.end(),
                     [&](const char* kind) { return std::strcmp(call, kind) == 0; });
}

bool isSystemCall(const char* call) { return !isOneOf(call, {"alloc", "growth"}); }

bool isChange(const char* call) {
  return isSystemCall(call) && !isOneOf(call, {"read", "stat", "list"});
}

bool isMeant(const char* call) {
  const char* const kind = fault.call.data();
  return std::strcmp(call, kind) == 0 || (std::strcmp(kind, "any") == 0 && isSystemCall(call)) ||
         (std::strcmp(kind, "change") == 0 && isChange(call));
}

/// Whether this call is to fail.
bool isDue(const char* call) {
  if (!armed || !isMeant(call)) {
    return false;
  }
  ++calls;
  return calls >= fault.first && calls - fault.first < fault.times;
}

bool strikesSubject(const char* call, const Subject& subject) {
  if (tracing && armed && isChange(call)) {
    trace(call, subject);
  }
  if (!isDue(call)) {
    return false;
  }
  if (marks++ < kMostMarks) {
    lineOf(subject).mark();
  }
  if (fault.error == 0) {
    syscall(SYS_kill, getpid(), SIGKILL);
  }
  errno = fault.error;
  return true;
}

}  // namespace

void arm() {
  readPlan();
  armed = true;
}

void disarm() { armed = false; }

bool strikes(const char* call, const char* path) { return strikesSubject(call, {AT_FDCWD, path}); }

bool strikes(const char* call, int descriptor) { return strikesSubject(call, {descriptor}); }

bool strikesAt(const char* call, int folder, const char* path, const char* to) {
  return strikesSubject(call, {folder, path, to});
}

bool strikesAllocation(std::size_t size) {
  const bool large = size >= kGrowthBytes;
  return strikes("alloc", "") || (large && strikes("growth", ""));
}

long grantedSize(const char* call, int descriptor, std::size_t size) {
  const auto all = static_cast<long>(size);
  if (!strikes(call, descriptor)) {
    return all;
  }
  return fault.error > 0 ? -1 : std::min<long>(all, -fault.error);
}

}  // namespace quenfold::faults
