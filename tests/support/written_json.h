#pragma once

#include <string>

#include "json/formatted_json.h"

namespace quenfold::test {

/// What `write` writes.
template <typename Write>
std::string writtenJson(Write write) {
  FormattedJson json;
  write(json);
  return json.take();
}

/// What the item's toJson() writes.
template <typename Item>
std::string jsonOf(const Item& item) {
  return writtenJson([&](FormattedJson& json) { item.toJson(json); });
}

}  // namespace quenfold::test
