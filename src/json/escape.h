#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "json/plain_run.h"

// The files of logical IO are spelled as cJSON spells JSON. It escapes the characters that end a
// plain run, and no other byte:
//
//   " \ and \b \f \n \r \t           a backslash and a letter
//   any other control character      \u001f, lowercase
//   the zero byte                    none: it ends the text
//   / and 0x7f to 0xff               as they are

namespace quenfold {

/// The digits of a control character without a letter.
inline constexpr std::string_view kCJsonDigits = "0123456789abcdef";

/// What stands for one character.
struct Escape {
  std::array<char, 6> characters;
  std::size_t length;

  [[nodiscard]] std::string_view view() const { return {characters.data(), length}; }
};

/// The escape of a character that ends a plain run.
Escape escapeOf(char special, std::string_view hexDigits);

/// Appends the inside of a JSON string to anything that texts are appended to.
template <typename Out>
void appendEscaped(Out& out, std::string_view text, std::string_view hexDigits) {
  while (true) {
    const std::size_t plain = plainRunLength(text);
    out.append(text.substr(0, plain));
    if (plain == text.size()) {
      return;
    }
    out.append(escapeOf(text[plain], hexDigits).view());
    text.remove_prefix(plain + 1);
  }
}

}  // namespace quenfold
