#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "generator/plant.h"
#include "generator/port_tables.h"
#include "generator/random.h"

namespace quenfold::generator {

/// What feeds one level of a logical input or output.
struct LevelPort {
  const PortEntry* entry = nullptr;  // the plant's; null is a level without a port
  bool byLabel = false;              // named by the user's label, not by the port key
};

struct LogicalRecord {
  std::string name;
  std::int32_t id = 0;
  std::vector<LevelPort> levels;  // one for each level of the table
  std::string description;
  std::array<std::string, 6> category;  // a filled one never follows an empty one
  std::string tally;
  std::int32_t redirect = 1;
};

/// The logical sources or destinations, about one record to 32 port entries of the plant.
struct LogicalTable {
  Direction direction = Direction::source;
  std::uint32_t levels = 0;  // the level keys are 1 to this number
  std::vector<LogicalRecord> records;
};

/// Names no ports but the plant's, of the given direction (source or destination) and with numbers
/// of 0 and above; the plant must outlive the table. A port with a user's label is named by it, in
/// a messy plant now and then by its key.
LogicalTable buildLogicalTable(const Plant& plant, Direction direction, Random& random);

}  // namespace quenfold::generator
