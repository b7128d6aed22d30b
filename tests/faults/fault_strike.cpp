#include "faults/fault_strike.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

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

void readPlan() {
  const char* const plan = std::getenv(kFaultVariable);
  std::array<char, 16> times{};
  if (plan == nullptr || std::sscanf(plan, "%15s %lu %15s %d", fault.call.data(), &fault.first,
                                     times.data(), &fault.error) != 4) {
    std::abort();
  }
  const bool on = std::strcmp(times.data(), "on") == 0;
  fault.times = on ? ULONG_MAX : std::strtoul(times.data(), nullptr, 10);
}

/// One write, so that a line is never torn.
void mark(const char* path) {
  if (marks++ < kMostMarks) {
    std::array<char, PATH_MAX + 1> line{};
    const std::size_t length = strnlen(path, PATH_MAX);
    std::memcpy(line.data(), path, length);
    line[length] = '\n';
    syscall(SYS_write, kMarkDescriptor, line.data(), length + 1);
  }
}

/// Whether this call is to fail.
bool isDue(const char* call) {
  if (!armed || std::strcmp(call, fault.call.data()) != 0) {
    return false;
  }
  ++calls;
  return calls >= fault.first && calls - fault.first < fault.times;
}

void markDescriptor(int descriptor) {
  if (descriptor == STDIN_FILENO || descriptor == STDOUT_FILENO) {
    mark(descriptor == STDIN_FILENO ? "standard input" : "standard output");
    return;
  }
  std::array<char, 32> link{};
  std::array<char, PATH_MAX> path{};
  std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
  if (readlink(link.data(), path.data(), path.size() - 1) < 0) {
    std::abort();
  }
  mark(path.data());
}

}  // namespace

void arm() {
  readPlan();
  armed = true;
}

void disarm() { armed = false; }

bool strikes(const char* call, const char* path) {
  if (!isDue(call)) {
    return false;
  }
  mark(path);
  errno = fault.error;
  return true;
}

bool strikes(const char* call, int descriptor) {
  if (!isDue(call)) {
    return false;
  }
  markDescriptor(descriptor);
  errno = fault.error;
  return true;
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
