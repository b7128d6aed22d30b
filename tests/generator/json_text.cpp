#include "generator/json_text.h"

#include <fmt/format.h>

namespace quenfold::generator {
namespace {

/// The letter behind the backslash, or 0 when the character has no short name.
char shortName(char character) {
  constexpr std::string_view kCharacters = "\"\\\b\f\n\r\t";
  constexpr std::string_view kNames = "\"\\bfnrt";
  const auto found = kCharacters.find(character);
  return found == std::string_view::npos ? '\0' : kNames[found];
}

void appendCharacter(std::string& out, char character) {
  const auto byte = static_cast<unsigned char>(character);
  const char name = shortName(character);
  if (name != '\0') {
    out += {'\\', name};
  } else if (byte < 0x20) {
    out += fmt::format("\\u{:04X}", byte);
  } else {
    out += character;
  }
}

}  // namespace

void appendJsonString(std::string& out, std::string_view text) {
  out += '"';
  for (const char character : text) {
    appendCharacter(out, character);
  }
  out += '"';
}

}  // namespace quenfold::generator
