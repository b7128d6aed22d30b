#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "json/document.h"
#include "matrices/format.h"

/// The unpack side's model: the packed port tree as its file gives it.
namespace quenfold::unpacking {

/// Both ends included; empty when `first` is greater than `last`.
struct Range {
  std::int32_t first = 0;
  std::int32_t last = 0;
};

/// Calls visit(number) for each of them. The counter is wider than they are: a range may end at the
/// largest.
template <typename Visit>
void forEachNumber(Range range, Visit visit) {
  for (std::int64_t number = range.first; number <= range.last; ++number) {
    visit(static_cast<std::int32_t>(number));
  }
}

struct PortTypeGroup {
  std::string port;  // a format pattern with the port number as its one argument
  std::int32_t first = 0;
  std::int32_t last = 0;
  std::map<std::string, Range> types;  // type name to its channels
  Direction direction = Direction::kUnknown;
};

/// Slot name to its groups in file order.
using SlotMap = std::map<std::string, std::vector<PortTypeGroup>>;

/// Device key (frame ID) to its slots.
using PortTree = std::map<std::string, SlotMap>;

/// Loads the value of the "matrices" member. The first malformed element throws a runtime error
/// that names it.
PortTree loadPortTree(const JsonValue& root);

}  // namespace quenfold::unpacking
