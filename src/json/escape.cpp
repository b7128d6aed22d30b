#include "json/escape.h"

namespace quenfold {

Escape escapeOf(char special, std::string_view hexDigits) {
  constexpr std::string_view kNamed = "\"\\\b\f\n\r\t";
  constexpr std::string_view kLetters = "\"\\bfnrt";
  const std::size_t named = kNamed.find(special);
  if (named != std::string_view::npos) {
    return {{'\\', kLetters[named]}, 2};
  }
  const auto code = static_cast<unsigned char>(special);
  return {{'\\', 'u', '0', '0', hexDigits[code / 16], hexDigits[code % 16]}, 6};
}

}  // namespace quenfold
