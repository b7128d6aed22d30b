#pragma once

#include <string>

#include "database/summary.h"

namespace quenfold::database {

/// The summary for a person, in aligned columns: the counts, the devices with their slots, the bits
/// of a packed port as a bar, the sizes of the files. Slots in a row with the same ports are one
/// line. Control characters are spelled.
std::string summaryText(const Summary& summary);

}  // namespace quenfold::database
