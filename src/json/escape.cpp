#include "json/escape.h"

#include <array>

namespace quenfold {
namespace {

/// What stands behind the backslash of a character with an escape of its own.
struct ShortEscape {
  char character;
  char letter;
};

constexpr std::array<ShortEscape, 7> kShortEscapes = {
    {{'"', '"'}, {'\\', '\\'}, {'\b', 'b'}, {'\f', 'f'}, {'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}}};

void appendEscape(TextStream& out, char special) {
  for (const auto& [character, letter] : kShortEscapes) {
    if (character == special) {
      const std::array<char, 2> escape = {'\\', letter};
      out.append({escape.data(), escape.size()});
      return;
    }
  }
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  const auto code = static_cast<unsigned char>(special);
  out.append("\\u00");
  out.append(kHexDigits.substr(code / kHexDigits.size(), 1));
  out.append(kHexDigits.substr(code % kHexDigits.size(), 1));
}

}  // namespace

void appendEscaped(TextStream& out, std::string_view text) {
  std::size_t copied = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (needsEscape(text[i])) {
      out.append(text.substr(copied, i - copied));
      appendEscape(out, text[i]);
      copied = i + 1;
    }
  }
  out.append(text.substr(copied));
}

}  // namespace quenfold
