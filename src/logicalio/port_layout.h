#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "logicalio/port_key.h"

namespace quenfold {

/// By `PortField`.
using FieldWidths = std::array<std::int32_t, kPortFieldCount>;

/// How packed ports are laid out, as their file tells: the fields of a port key with their widths.
std::string layoutString(const FieldWidths& widths);

/// Sets the widths of the fields that the layout names, wherever they stand in it. False, and
/// nothing changed, when `parseBitPacking` finds no token in it.
bool readLayout(std::string_view layout, FieldWidths& widths);

}  // namespace quenfold
