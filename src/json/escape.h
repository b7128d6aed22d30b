#pragma once

#include <string_view>

#include "app/text_stream.h"

namespace quenfold {

/// Whether a character has to be escaped in a JSON string: a quotation mark, a backslash and
/// control characters, and no other byte.
inline bool needsEscape(char c) {
  constexpr unsigned char kFirstPrintable = 0x20;
  return c == '"' || c == '\\' || static_cast<unsigned char>(c) < kFirstPrintable;
}

/// Appends the inside of a JSON string as the JSON writers of this program spell it.
void appendEscaped(TextStream& out, std::string_view text);

}  // namespace quenfold
