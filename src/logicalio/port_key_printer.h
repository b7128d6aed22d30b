#pragma once

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "logicalio/port_dict.h"

namespace quenfold {

/// Prints the port keys of packed numbers. Ports mostly come with their neighbours, which have the
/// same device, slot and prefix: that half of the key is kept from one to the next. The dictionary
/// must outlive the printer and stay unchanged.
class PortKeyPrinter {
 public:
  explicit PortKeyPrinter(const PortDict& dict) : dict_(dict) {}

  /// The key as `PortDict::unpackToPortKey` gives it; valid until the next call.
  std::string_view print(std::uint64_t packed);

 private:
  void printHead(const PortKeyIds& ids);

  const PortDict& dict_;
  fmt::memory_buffer key_;    // the last one
  std::size_t headSize_ = 0;  // of the half that is kept; 0 when there is none yet
  std::array<std::uint32_t, 3> headIds_{};
};

}  // namespace quenfold
