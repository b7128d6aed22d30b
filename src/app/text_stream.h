#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

namespace quenfold {

/// Takes a text in pieces of any size and hands it on in chunks, so that no text has to be in
/// memory as a whole. Allocates nothing.
class TextStream {
 public:
  /// Gets the chunks in order and may throw.
  using Consumer = std::function<void(std::string_view)>;

  explicit TextStream(Consumer consumer) : consumer_(std::move(consumer)) {}

  void append(std::string_view bytes) {
    total_ += bytes.size();
    if (bytes.size() > buffer_.size() - used_) {
      flush();
      if (bytes.size() > buffer_.size()) {
        consumer_(bytes);
        return;
      }
    }
    std::copy(bytes.begin(), bytes.end(), buffer_.data() + used_);
    used_ += bytes.size();
  }

  /// Hands on what has been kept so far; needed at the end of the text.
  void flush() {
    if (used_ != 0) {
      consumer_({buffer_.data(), used_});
      used_ = 0;
    }
  }

  /// Bytes appended so far.
  [[nodiscard]] std::uint64_t size() const { return total_; }

 private:
  static constexpr std::size_t kChunk = 64UL * 1024;

  Consumer consumer_;
  std::size_t used_ = 0;
  std::uint64_t total_ = 0;
  std::array<char, kChunk> buffer_ = {};
};

}  // namespace quenfold
