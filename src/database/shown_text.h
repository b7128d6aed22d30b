#pragma once

#include <string>
#include <string_view>

namespace quenfold::database {

std::string shownText(std::string_view text);

}  // namespace quenfold::database
