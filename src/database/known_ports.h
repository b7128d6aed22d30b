#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "app/indexed_list.h"
#include "database/model.h"

namespace quenfold::database {

/// A port of a legacy database and how it comes back.
struct KnownPort {
  std::string_view name;
  std::uint32_t listing = 0;  // the first place of the port in the model
  bool returned = false;
  std::uint32_t matrix = 0;  // where it comes back
  std::string_view label;    // with which it comes back
};

/// The ports of a model, each once.
using KnownPorts = IndexedList<KnownPort, &KnownPort::name>;

}  // namespace quenfold::database
