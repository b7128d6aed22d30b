#pragma once

#include <optional>
#include <string_view>

namespace quenfold::packing {

/// An entry of a matrix's ports. Behind both texts stands a zero byte.
struct PortEntry {
  std::string_view port;
  std::string_view label;
};

/// Nearly all of "matrices.json" are entries in one spelling, `{"port":"...","label":"..."}`, side
/// by side and without an escape. `place` stands at the brace that ends one of them. When such a
/// one follows, `place` moves to the brace that ends it; otherwise nothing changes. Behind the zero
/// byte that ends the text there must be `kScanPadding` bytes.
std::optional<PortEntry> takeNextPortEntry(char*& place);

}  // namespace quenfold::packing
