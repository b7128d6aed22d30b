#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Names and labels come from files and may hold anything: none of it may command a terminal.

namespace quenfold::database {

/// The text for a person to read: well-formed UTF-8 as it is, but each byte of a control character
/// (DEL and those beyond ASCII included) or of no character at all as "\x1B". Nothing else is
/// escaped, so this is no form to read back.
std::string shownText(std::string_view text);

/// The same in quotation marks.
std::string quotedText(std::string_view text);

/// The characters of a shown text, which is its width where none is wide.
std::size_t shownWidth(std::string_view shown);

}  // namespace quenfold::database
