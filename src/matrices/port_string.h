#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "matrices/format.h"

namespace quenfold {

/// A port string "device.slot.port.type.chN" cut into its five parts: views into that string, and
/// the channel number. Any part may be empty.
struct SplitPort {
  std::string_view device;
  std::string_view slot;
  std::string_view port;
  std::string_view type;
  std::int32_t ch = 0;
};

/// Throws "splitPort - no device.", "Bad ch string" (also when there are fewer than four dots) or
/// "PortString number error".
SplitPort splitPort(std::string_view portText);

/// The number of a channel part "ch3". Throws "Bad ch string" or "PortString number error".
std::int32_t parseChannel(std::string_view channelPart);

/// A port part "mixer-in[3]" as the pattern "mixer-in[]" and the number 3.
struct PortString {
  std::string name;
  std::int32_t id = 0;
};

inline bool operator==(const PortString& a, const PortString& b) {
  return a.id == b.id && a.name == b.name;
}
std::uint32_t hashOf(const PortString& port);

/// Throws "PortString '[' not found", "PortString ']' not found" or "PortString number error".
PortString parsePortString(std::string_view portPart);

/// Source or destination by the prefix of a pattern name; anything else is unknown.
Direction classifyPortType(std::string_view patternName);

}  // namespace quenfold
