#pragma once

#include <map>
#include <string>
#include <utility>

#include "logicalio/port_dict.h"
#include "matrices/packed_reader.h"

namespace quenfold::test {

using Channels = std::map<std::string, unpacking::Range>;

/// Ports of a pattern such as "in[{}]", sources.
inline unpacking::PortTypeGroup sourcesOf(std::string pattern, unpacking::Range ports,
                                          Channels types) {
  return {std::move(pattern), ports.first, ports.last, std::move(types), Direction::kSource};
}

inline unpacking::PortTypeGroup destinationsOf(std::string pattern, unpacking::Range ports,
                                               Channels types) {
  return {std::move(pattern), ports.first, ports.last, std::move(types), Direction::kDestination};
}

/// The dictionary of a table whose packed ports have these widths.
inline PortDict dictOf(const FieldWidths& widths) {
  PortDict dict;
  dict.bits = widths;
  dict.computeShifts();
  return dict;
}

}  // namespace quenfold::test
