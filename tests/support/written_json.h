#pragma once

#include <string>

#include "json/cjson_tree.h"

namespace quenfold::test {

/// What the item's toJson() gives, printed.
template <typename Item>
std::string jsonOf(const Item& item) {
  return printed(buildCJson([&] { return item.toJson(); }));
}

}  // namespace quenfold::test
