#pragma once

#include <cstdint>
#include <string_view>

#include "app/error.h"

// A few bytes of input may stand for more than any memory holds. What multiplies is counted before
// it is written out and ends the run at these limits, which are far above any plant. A build for
// fuzzing has them smaller by this power of two, so that an input at the limits is tried quickly.
#ifndef QUENFOLD_LIMITS_SMALLER_BY
#define QUENFOLD_LIMITS_SMALLER_BY 0
#endif

namespace quenfold {

/// Two to this power; less in a build for fuzzing.
constexpr std::uint64_t limitOfBits(unsigned power) {
  return std::uint64_t{1} << (power - QUENFOLD_LIMITS_SMALLER_BY);
}

/// Ports written out by one run; every channel is one.
inline constexpr std::uint64_t kMaxPorts = limitOfBits(26);

/// Bytes of one input, and of all the port names that one run writes out.
inline constexpr std::uint64_t kMaxTextBytes = limitOfBits(33);

/// Bytes of the device names that one run puts in place of others in the keys of port labels.
inline constexpr std::uint64_t kMaxReplacedBytes = limitOfBits(30);

/// Bytes of the names, ports and categories of the logical IO records that one run unpacks.
inline constexpr std::uint64_t kMaxRecordBytes = limitOfBits(30);

/// Adds up what a run is about to hold.
class Budget {
 public:
  /// `what` is for the message and must outlive the budget.
  Budget(std::string_view what, std::uint64_t limit) : what_(what), limit_(limit) {}

  /// Throws a length error "<what>: more than <limit>" once more than the limit has been taken.
  void take(std::uint64_t amount) {
    if (amount > limit_ - taken_) {
      throw lengthError("{}: more than {}", what_, limit_);
    }
    taken_ += amount;
  }

  /// The same for `count` times `amount`.
  void takeTimes(std::uint64_t count, std::uint64_t amount) {
    if (count != 0 && amount > (limit_ - taken_) / count) {
      throw lengthError("{}: more than {}", what_, limit_);
    }
    taken_ += count * amount;
  }

 private:
  std::string_view what_;
  std::uint64_t limit_;
  std::uint64_t taken_ = 0;
};

/// Throws a length error "file too large: <name>" for an input of more than `kMaxTextBytes`.
inline void requireSize(std::uint64_t bytes, std::string_view name) {
  if (bytes > kMaxTextBytes) {
    throw lengthError("file too large: {}", name);
  }
}

}  // namespace quenfold
