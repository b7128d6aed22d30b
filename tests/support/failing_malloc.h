#pragma once

#include <cstddef>

namespace quenfold::test {

/// While it lives, malloc gives null to the program's own code from the given call on (0: from the
/// first on). Libraries, operator new and realloc are not affected.
class FailingMalloc {
 public:
  explicit FailingMalloc(std::size_t callsAllowed);
  ~FailingMalloc();
  FailingMalloc(const FailingMalloc&) = delete;
  FailingMalloc& operator=(const FailingMalloc&) = delete;

  /// Whether a call has failed so far.
  [[nodiscard]] static bool hasFailed();
};

}  // namespace quenfold::test
