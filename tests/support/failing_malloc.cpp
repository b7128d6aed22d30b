#include "support/failing_malloc.h"

#include <limits>

namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

std::size_t callsLeft = kUnlimited;
bool failed = false;

}  // namespace

// The linker sends malloc here (--wrap) and names the library's function __real_malloc.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" {
void* __real_malloc(std::size_t size);
void* __wrap_malloc(std::size_t size);

void* __wrap_malloc(std::size_t size) {
  if (callsLeft == 0) {
    failed = true;
    return nullptr;
  }
  callsLeft -= callsLeft == kUnlimited ? 0 : 1;
  return __real_malloc(size);
}
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

namespace quenfold::test {

FailingMalloc::FailingMalloc(std::size_t callsAllowed) {
  callsLeft = callsAllowed;
  failed = false;
}

FailingMalloc::~FailingMalloc() { callsLeft = kUnlimited; }

bool FailingMalloc::hasFailed() { return failed; }

}  // namespace quenfold::test
