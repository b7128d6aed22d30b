#include "random_plant.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>

#include "generator/matrices_text.h"

namespace quenfold::fuzz {

generator::Random randomOf(std::string_view input) {
  const auto seed = static_cast<std::uint32_t>(input.size());
  return generator::Random([input, more = std::mt19937(seed), next = std::size_t{0}]() mutable {
    // The same byte four times over spreads evenly over the words.
    return next < input.size() ? static_cast<unsigned char>(input[next++]) * 0x01010101U
                               : static_cast<std::uint32_t>(more());
  });
}

generator::Plant drawPlant(generator::Random& random) {
  constexpr std::uint32_t kMostPorts = 200;
  constexpr std::uint32_t kMostDevices = 5;
  constexpr std::uint32_t kMostSlots = 9;
  generator::PlantParameters parameters;
  parameters.devices = random.below(kMostDevices + 1);
  parameters.slots = random.below(kMostSlots + 1);
  // A number left to the generator, 0, is up to three devices or four slots, fewer in small plants.
  const bool anyShape = parameters.devices == 0 && parameters.slots == 0;
  const std::uint32_t fewest = std::max(parameters.devices, 3U) * std::max(parameters.slots, 4U);
  parameters.ports = random.between(anyShape ? 1 : fewest, kMostPorts);
  return generator::buildPlant(parameters, random);
}

std::string matricesTextOf(const generator::Plant& plant) {
  std::string text;
  generator::writeMatrices(plant, [&text](std::string_view piece) { text += piece; });
  return text;
}

}  // namespace quenfold::fuzz
