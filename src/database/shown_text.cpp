#include "database/shown_text.h"

namespace quenfold::database {

std::string shownText(std::string_view text) { return std::string(text); }

}  // namespace quenfold::database
