#include "support/failing_new.h"

#if QUENFOLD_FAILING_NEW
#include <cstdlib>
#include <new>

namespace quenfold::test {
namespace {

bool failing = false;
std::size_t left = 0;

bool isGranted() {
  if (!failing) {
    return true;
  }
  if (left == 0) {
    return false;
  }
  --left;
  return true;
}

}  // namespace

FailingNew::FailingNew(std::size_t requestsAllowed) {
  left = requestsAllowed;
  failing = true;
}

FailingNew::~FailingNew() { failing = false; }

}  // namespace quenfold::test

// NOLINTBEGIN(*-no-malloc,*-owning-memory)
void* operator new(std::size_t size) {
  void* const memory = quenfold::test::isGranted() ? std::malloc(size > 0 ? size : 1) : nullptr;
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
// NOLINTEND(*-no-malloc,*-owning-memory)
#endif
