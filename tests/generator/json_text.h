#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quenfold::generator {

/// Takes the pieces of a document one after the other; a piece is valid during the call only.
using TextSink = std::function<void(std::string_view)>;

/// Appends a quoted JSON string: UTF-8 as it is, control characters by their short names or else
/// as \u00XX.
void appendJsonString(std::string& out, std::string_view text);

}  // namespace quenfold::generator
