#pragma once

#include <cstddef>
#include <memory_resource>
#include <new>

namespace quenfold::test {

/// While it lives, arenas get memory from it: from the given request on (0: from the first on)
/// none.
class FailingMemory : public std::pmr::memory_resource {
 public:
  explicit FailingMemory(std::size_t requestsAllowed)
      : left_(requestsAllowed), usual_(std::pmr::set_default_resource(this)) {}
  ~FailingMemory() override { std::pmr::set_default_resource(usual_); }
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  /// Whether a request has failed so far.
  [[nodiscard]] bool hasFailed() const { return failed_; }

 private:
  void* do_allocate(std::size_t size, std::size_t alignment) override {
    if (left_ == 0) {
      failed_ = true;
      throw std::bad_alloc();
    }
    --left_;
    return usual_->allocate(size, alignment);
  }
  void do_deallocate(void* memory, std::size_t size, std::size_t alignment) override {
    usual_->deallocate(memory, size, alignment);
  }
  [[nodiscard]] bool do_is_equal(const memory_resource& other) const noexcept override {
    return this == &other;
  }

  std::size_t left_;
  std::pmr::memory_resource* usual_;
  bool failed_ = false;
};

}  // namespace quenfold::test
