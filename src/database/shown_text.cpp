#include "database/shown_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace quenfold::database {
namespace {

/// Characters by their first byte: their length, and what the second byte may be.
struct Characters {
  unsigned char first;
  unsigned char last;
  std::size_t length;
  unsigned char firstSecond;
  unsigned char lastSecond;
};

/// All that are shown. Left out are the control characters (below 0x20, 0x7F, and 0xC2 followed by
/// 0x80 to 0x9F), what a shorter form says as well, the surrogates and what is beyond Unicode.
constexpr std::array<Characters, 10> kShown = {{{0x20, 0x7E, 1, 0, 0},
                                                {0xC2, 0xC2, 2, 0xA0, 0xBF},
                                                {0xC3, 0xDF, 2, 0x80, 0xBF},
                                                {0xE0, 0xE0, 3, 0xA0, 0xBF},
                                                {0xE1, 0xEC, 3, 0x80, 0xBF},
                                                {0xED, 0xED, 3, 0x80, 0x9F},
                                                {0xEE, 0xEF, 3, 0x80, 0xBF},
                                                {0xF0, 0xF0, 4, 0x90, 0xBF},
                                                {0xF1, 0xF3, 4, 0x80, 0xBF},
                                                {0xF4, 0xF4, 4, 0x80, 0x8F}}};

unsigned char byteAt(std::string_view text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

/// The length of the character that the text begins with, 0 when it is not to be shown.
std::size_t shownLength(std::string_view text) {
  const unsigned char lead = byteAt(text, 0);
  const auto* const found =
      std::find_if(kShown.begin(), kShown.end(), [lead](const Characters& characters) {
        return characters.first <= lead && lead <= characters.last;
      });
  if (found == kShown.end() || found->length > text.size()) {
    return 0;
  }
  if (found->length == 1) {
    return 1;
  }
  const unsigned char second = byteAt(text, 1);
  const std::string_view others = text.substr(2, found->length - 2);
  const bool whole = found->firstSecond <= second && second <= found->lastSecond &&
                     std::all_of(others.begin(), others.end(), continuesCharacter);
  return whole ? found->length : 0;
}

}  // namespace

std::string shownText(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = shownLength(text);
    if (length == 0) {
      shown += fmt::format("\\x{:02X}", byteAt(text, 0));
    }
    shown.append(text.substr(0, length));
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return shown;
}

std::string quotedText(std::string_view text) { return "\"" + shownText(text) + "\""; }

std::size_t shownWidth(std::string_view shown) {
  return shown.size() -
         static_cast<std::size_t>(std::count_if(shown.begin(), shown.end(), continuesCharacter));
}

}  // namespace quenfold::database
