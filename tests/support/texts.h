#pragma once

#include <string>
#include <string_view>

#include "app/text_stream.h"

namespace quenfold::test {

/// Keeps the text.
class StringStream final : public TextStream {
 public:
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  void handOn(std::string_view chunk) override { text_ += chunk; }

  std::string text_;
};

/// All that `produce` appends to a stream.
template <typename Produce>
std::string textOf(Produce produce) {
  StringStream out;
  produce(out);
  out.flush();
  return out.text();
}

}  // namespace quenfold::test
