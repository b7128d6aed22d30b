#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/difference.h"

namespace quenfold::database {

/// The number of a text that is nothing but its decimal digits, as it is printed: up to 2^32 - 1,
/// without a sign or a leading zero.
std::optional<std::uint32_t> plainNumber(std::string_view text);

/// "3", or "3..8" where the two differ.
std::string rangeText(std::int64_t first, std::int64_t last);

/// Differences in a row as one.
struct FoldedPlace {
  std::string place;
  std::size_t count = 0;  // how many differences they are
};

/// As many differences at ports, from that one on, as one text names: with the same change, and
/// port strings that differ in nothing but the channel, one after the other, or also in the number
/// in brackets, one after the other with the same channels each:
/// "Frame1.slot2.in[3..8].audio.ch1..2". Only plain numbers are folded.
FoldedPlace foldPorts(const std::vector<Difference>& differences, std::size_t first);

}  // namespace quenfold::database
