#pragma once

#include <unistd.h>

#include <cerrno>

namespace quenfold {

/// What a system call answers when it fails; no descriptor.
inline constexpr int kFailed = -1;

/// The call's answer; repeats a call that a signal interrupted before it did anything.
template <typename Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result == kFailed && errno == EINTR) {
    result = call();
  }
  return result;
}

/// Owns an open descriptor. What closing it fails with is lost: nothing is to be written through it
/// without a sync.
class Descriptor {
 public:
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  ~Descriptor() { close(descriptor_); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int get() const { return descriptor_; }

 private:
  int descriptor_;
};

}  // namespace quenfold
