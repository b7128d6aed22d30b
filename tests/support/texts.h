#pragma once

#include <string>
#include <string_view>

#include "app/text_stream.h"

namespace quenfold::test {

/// All that `produce` appends to a stream.
template <typename Produce>
std::string textOf(Produce produce) {
  std::string text;
  TextStream out([&](std::string_view chunk) { text += chunk; });
  produce(out);
  out.flush();
  return text;
}

}  // namespace quenfold::test
