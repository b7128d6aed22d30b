#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "generator/logical_io.h"
#include "generator/logical_text.h"
#include "generator/matrices_text.h"
#include "generator/plant.h"
#include "generator/random.h"

namespace quenfold::generator {

/// A plant of the usual shape.
inline Plant plantOf(std::uint32_t ports, std::uint32_t seed, bool messy = false) {
  Random random = seededRandom(seed);
  return buildPlant({ports, 0, 0, messy}, random);
}

inline std::string matricesTextOf(const Plant& plant) {
  std::string text;
  writeMatrices(plant, [&text](std::string_view piece) { text += piece; });
  return text;
}

inline LogicalTable tableOf(const Plant& plant, Direction direction) {
  Random random = seededRandom(7);
  return buildLogicalTable(plant, direction, random);
}

inline std::string tableTextOf(const Plant& plant, Direction direction) {
  std::string text;
  writeLogicalTable(plant, tableOf(plant, direction),
                    [&text](std::string_view piece) { text += piece; });
  return text;
}

/// A check sum (64-bit FNV-1a) that depends on nothing but the bytes.
inline std::uint64_t sumOf(std::string_view text) {
  std::uint64_t sum = 14695981039346656037U;
  for (const char character : text) {
    sum = (sum ^ static_cast<unsigned char>(character)) * 1099511628211U;
  }
  return sum;
}

}  // namespace quenfold::generator
