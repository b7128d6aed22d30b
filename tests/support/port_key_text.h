#pragma once

#include <fmt/format.h>

#include <string>

#include "logicalio/port_key.h"

namespace quenfold::test {

/// The key of these fields.
inline std::string printPortKey(const PortKeyText& fields) {
  fmt::memory_buffer key;
  appendPortKeyHead(key, fields.device, fields.slot, fields.portPrefix);
  appendPortKeyTail(key, fields.portId, fields.type, fields.ch);
  return fmt::to_string(key);
}

}  // namespace quenfold::test
