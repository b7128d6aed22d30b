#include "generator/messy.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quenfold::generator {
namespace {

std::uint32_t drawDevice(const Plant& plant, Random& random) {
  return random.below(static_cast<std::uint32_t>(plant.devices.size()));
}

/// `before` is the entry in front, or the entry itself when it is the first.
void disturbEntry(PortEntry& entry, const PortEntry& before, const Plant& plant, Random& random) {
  switch (random.below(60)) {
    case 0:
      entry = before;
      break;
    case 1:
      entry.number = 0;
      break;
    case 2:
      entry.number = -static_cast<std::int32_t>(random.between(1, 3));
      break;
    case 3:
      entry.channel += 2;
      break;
    case 4:
      entry.label = random.below(static_cast<std::uint32_t>(plant.labels.size()));
      break;
    case 5:
      entry.device = drawDevice(plant, random);
      break;
    default:
      break;
  }
}

void disturbOrder(std::vector<PortEntry>& ports, Random& random) {
  const std::uint32_t order = random.below(3);
  if (order == 0) {
    std::reverse(ports.begin(), ports.end());
  } else if (order == 1) {
    random.shuffle(ports);
  }
}

void disturbPorts(std::vector<PortEntry>& ports, const Plant& plant, Random& random) {
  for (std::size_t index = 0; index < ports.size(); ++index) {
    disturbEntry(ports[index], ports[index == 0 ? 0 : index - 1], plant, random);
  }
  disturbOrder(ports, random);
}

void disturbNaming(Matrix& matrix, std::size_t index, const Plant& plant, Random& random) {
  switch (index % 4) {
    case 0:
      matrix.type = static_cast<std::int32_t>(random.below(10));
      break;
    case 1:
      matrix.name.insert(matrix.name.find('.'), ".spare");
      break;
    case 2:
      matrix.serial = plant.devices[drawDevice(plant, random)].serial;
      break;
    default:
      break;
  }
}

}  // namespace

void makeMessy(Plant& plant, Random& random) {
  plant.messy = true;
  random.shuffle(plant.matrices);
  for (std::size_t index = 0; index < plant.matrices.size(); ++index) {
    Matrix& matrix = plant.matrices[index];
    matrix.id = static_cast<std::int32_t>(random.below(1000));
    disturbNaming(matrix, index, plant, random);
    disturbPorts(matrix.ports, plant, random);
  }
  plant.matrices.back().serial.clear();
}

}  // namespace quenfold::generator
