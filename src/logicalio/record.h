#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "logicalio/category.h"

namespace quenfold {

/// The redirect of a record that has none.
inline constexpr std::int32_t kNoRedirect = 1;

/// One logical source or destination.
struct LogicalIORecord {
  std::string name;
  std::int32_t id = 0;
  std::vector<std::string> ports;  // port keys or labels; packing numbers them instead
  std::vector<CatEntry> categories;
  std::string tally;
  std::int32_t redirect = kNoRedirect;
  std::string description;
};

}  // namespace quenfold
