#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quenfold {

/// Takes a text in pieces of any size and hands it on in chunks, so that no text has to be in
/// memory as a whole. Where to is the derived class's. Allocates nothing.
class TextStream {
 public:
  TextStream() = default;
  TextStream(const TextStream&) = delete;
  TextStream& operator=(const TextStream&) = delete;

  void append(std::string_view bytes) {
    total_ += bytes.size();
    if (bytes.size() > buffer_.size() - used_) {
      flush();
      if (bytes.size() > buffer_.size()) {
        handOn(bytes);
        return;
      }
    }
    std::copy(bytes.begin(), bytes.end(), buffer_.data() + used_);
    used_ += bytes.size();
  }

  /// Hands on what has been kept so far; needed at the end of the text.
  void flush() {
    if (used_ != 0) {
      handOn({buffer_.data(), used_});
      used_ = 0;
    }
  }

  /// Bytes appended so far.
  [[nodiscard]] std::uint64_t size() const { return total_; }

 protected:
  ~TextStream() = default;

 private:
  /// Gets the chunks in order and may throw.
  virtual void handOn(std::string_view chunk) = 0;

  static constexpr std::size_t kChunk = 65536;

  std::size_t used_ = 0;
  std::uint64_t total_ = 0;
  std::array<char, kChunk> buffer_ = {};
};

}  // namespace quenfold
