#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quenfold::bench {

/// One port of a shape. The member texts are those of the file.
struct ShapePort {
  std::uint32_t device = 0;  // in ascending order from port to port
  std::string name;          // "slot1.in[3].audio.ch1"
  std::string label;         // the user's; empty when none
};

/// A database that is large in one way and plain in all others.
struct Shape {
  std::vector<ShapePort> ports;
  std::uint32_t records = 0;  // of "sources.json"
  std::uint32_t levels = 0;   // of each record; its ports follow one another through the list
};

/// The shape of that name with `count` of what it is large in. Throws std::invalid_argument for a
/// name that is not in the table.
Shape buildShape(std::string_view name, std::uint32_t count);

/// The names, one a line.
std::string shapeNames();

}  // namespace quenfold::bench
