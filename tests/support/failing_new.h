#pragma once

#include <cstddef>

// Not in a build with a sanitizer, which has an operator new of its own.
#if defined(__SANITIZE_ADDRESS__)
#define QUENFOLD_FAILING_NEW 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUENFOLD_FAILING_NEW 0
#endif
#endif
#ifndef QUENFOLD_FAILING_NEW
#define QUENFOLD_FAILING_NEW 1
#endif

#if QUENFOLD_FAILING_NEW
namespace quenfold::test {

/// While it lives, the global operator new fails from the given request on (0: from the first on).
/// One at a time.
class FailingNew {
 public:
  explicit FailingNew(std::size_t requestsAllowed);
  ~FailingNew();
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;
};

}  // namespace quenfold::test
#endif
