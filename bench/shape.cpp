#include "shape.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include "generator/random.h"

namespace quenfold::bench {
namespace {

constexpr std::uint32_t kUsualLevels = 10;
constexpr std::uint32_t kFewPorts = 100;
constexpr std::uint32_t kFewRecords = 20;
constexpr std::uint32_t kSeed = 1;

template <typename PortOf>
std::vector<ShapePort> listOf(std::uint32_t count, PortOf portOf) {
  std::vector<ShapePort> ports;
  ports.reserve(count);
  for (std::uint32_t number = 1; number <= count; ++number) {
    ports.push_back(portOf(number));
  }
  return ports;
}

/// Every port stands in one source.
Shape withSources(std::vector<ShapePort> ports) {
  const auto count = static_cast<std::uint32_t>(ports.size());
  return {std::move(ports), std::max(count / kUsualLevels, 1U), kUsualLevels};
}

ShapePort numbered(std::uint32_t number) {
  return {0, fmt::format("slot1.in[{}].audio.ch1", number), ""};
}

Shape fallingPorts(std::uint32_t count) {
  return withSources(listOf(count, [=](auto number) { return numbered(count + 1 - number); }));
}

Shape randomPorts(std::uint32_t count) {
  std::vector<ShapePort> ports = listOf(count, numbered);
  generator::Random random = generator::seededRandom(kSeed);
  random.shuffle(ports);
  return withSources(std::move(ports));
}

Shape devices(std::uint32_t count) {
  return withSources(listOf(4 * count, [](auto number) {
    return ShapePort{(number - 1) / 4, fmt::format("slot1.in[{}].audio.ch1", number % 4 + 1), ""};
  }));
}

/// Layouts of two types that differ in one channel of the second.
Shape layouts(std::uint32_t count) {
  return withSources(listOf(2 * count, [](auto number) {
    const std::uint32_t port = (number + 1) / 2;
    return ShapePort{0,
                     number % 2 == 1 ? fmt::format("slot1.in[{}].video.ch1", port)
                                     : fmt::format("slot1.in[{}].audio.ch{}", port, port),
                     ""};
  }));
}

Shape prefixes(std::uint32_t count) {
  return withSources(listOf(count, [](auto number) {
    return ShapePort{0, fmt::format("slot1.in-{}[1].audio.ch1", number), ""};
  }));
}

Shape channels(std::uint32_t count) {
  return withSources(listOf(count, [](auto number) {
    return ShapePort{0, fmt::format("slot1.in[1].audio.ch{}", number), ""};
  }));
}

/// A device for each label, and a user's label on each of its two ports.
Shape deviceLabels(std::uint32_t count) {
  return withSources(listOf(2 * count, [](auto number) {
    return ShapePort{(number - 1) / 2, fmt::format("slot1.in[{}].audio.ch1", number % 2 + 1),
                     fmt::format("Vox {}", number)};
  }));
}

Shape sources(std::uint32_t count) { return {listOf(kFewPorts, numbered), count, 2}; }

Shape levelKeys(std::uint32_t count) { return {listOf(kFewPorts, numbered), kFewRecords, count}; }

struct NamedShape {
  std::string_view name;
  Shape (*build)(std::uint32_t count);
};

constexpr std::array<NamedShape, 9> kShapes{{{"ports-falling", fallingPorts},
                                             {"ports-random", randomPorts},
                                             {"devices", devices},
                                             {"layouts", layouts},
                                             {"prefixes", prefixes},
                                             {"channels", channels},
                                             {"device-labels", deviceLabels},
                                             {"sources", sources},
                                             {"level-keys", levelKeys}}};

}  // namespace

Shape buildShape(std::string_view name, std::uint32_t count) {
  const auto* const found = std::find_if(kShapes.begin(), kShapes.end(),
                                         [=](const NamedShape& each) { return each.name == name; });
  if (found == kShapes.end()) {
    throw std::invalid_argument(fmt::format("unknown shape \"{}\"", name));
  }
  return found->build(count);
}

std::string shapeNames() {
  std::string names;
  for (const NamedShape& shape : kShapes) {
    names.append("  ").append(shape.name) += '\n';
  }
  return names;
}

}  // namespace quenfold::bench
