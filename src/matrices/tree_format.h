#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quenfold {

/// What a port is to its matrix.
enum class Direction : std::int32_t { kSource = 0, kDestination = 1, kUnknown = 2 };

/// The direction strings of the packed port tree, by direction.
inline constexpr std::array<std::string_view, 3> kDirectionTexts = {"s", "d", "?"};

inline std::string_view directionText(Direction direction) {
  return kDirectionTexts.at(static_cast<std::size_t>(direction));
}

/// The member names of a port type group, in the writer's order.
inline constexpr const char* kGroupPort = "port";
inline constexpr const char* kGroupTypes = "types";

}  // namespace quenfold
