#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "generator/matrices_text.h"
#include "generator/plant.h"
#include "generator/port_tables.h"
#include "generator/random.h"
#include "json/document.h"
#include "support/compact_json.h"
#include "support/plants.h"

namespace quenfold::generator {
namespace {

std::string keyOf(const Plant& plant, const PortEntry& entry) {
  std::string key;
  appendPortKey(key, plant, entry);
  return key;
}

/// The port entries of "matrices.json".
std::size_t countPorts(std::string text) {
  const JsonDocument document = parseJson(text);
  std::size_t count = 0;
  for (const JsonValue& matrix : document["Config"]["Matrices"].GetArray()) {
    count += matrix["ports"].Size();
  }
  return count;
}

/// The text as the compact writer gives it.
std::string compact(std::string text) { return test::compactJson(parseJson(text)); }

std::vector<PortEntry> allEntries(const Plant& plant) {
  std::vector<PortEntry> entries;
  for (const Matrix& matrix : plant.matrices) {
    entries.insert(entries.end(), matrix.ports.begin(), matrix.ports.end());
  }
  return entries;
}

/// Slots in byte order of their names, the numbers of a prefix and the channels of a port
/// ascending.
bool standsInOrder(const PortEntry& entry, const PortEntry& next) {
  if (entry.slot != next.slot) {
    return std::to_string(entry.slot) < std::to_string(next.slot);
  }
  if (entry.prefix != next.prefix) {
    return true;
  }
  if (entry.number != next.number) {
    return entry.number < next.number;
  }
  return entry.channel + 1 == next.channel;
}

TEST(GeneratorRandom, StaysBelowItsBound) {
  Random least([] { return 0U; });
  Random most([] { return UINT32_MAX; });
  EXPECT_EQ(least.below(7), 0U);
  EXPECT_EQ(most.below(7), 6U);
  EXPECT_EQ(least.between(3, 5), 3U);
  EXPECT_EQ(most.between(3, 5), 5U);
  EXPECT_TRUE(least.percent(1));
  EXPECT_FALSE(most.percent(99));
}

TEST(GeneratorJson, EscapesStrings) {
  std::string out;
  appendJsonString(out, "a/é\"\\\b\f\n\r\t\x1f\x7f");
  EXPECT_EQ(out, "\"a/é\\\"\\\\\\b\\f\\n\\r\\t\\u001F\x7f\"");
}

TEST(GeneratorPlant, OneSeedGivesOneText) {
  EXPECT_EQ(matricesTextOf(plantOf(1000, 5)), matricesTextOf(plantOf(1000, 5)));
  EXPECT_NE(matricesTextOf(plantOf(1000, 5)), matricesTextOf(plantOf(1000, 6)));
  EXPECT_EQ(matricesTextOf(plantOf(1000, 5, true)), matricesTextOf(plantOf(1000, 5, true)));
  EXPECT_NE(matricesTextOf(plantOf(1000, 5, true)), matricesTextOf(plantOf(1000, 6, true)));
}

TEST(GeneratorPlant, IsTheSameOnEveryHost) {
  EXPECT_EQ(sumOf(matricesTextOf(plantOf(1000, 1))), 6910945059377869362U);
  EXPECT_EQ(sumOf(matricesTextOf(plantOf(1000, 1, true))), 7978150349828166011U);
}

TEST(GeneratorPlant, HasTheNumberOfPortsAskedFor) {
  for (const std::uint32_t ports : {1U, 2U, 10U, 11U, 1000U, 50000U}) {
    EXPECT_EQ(countPorts(matricesTextOf(plantOf(ports, 3))), ports);
    EXPECT_EQ(countPorts(matricesTextOf(plantOf(ports, 3, true))), ports);
  }
}

TEST(GeneratorPlant, TakesTheShapeAskedFor) {
  Random random = seededRandom(2);
  const Plant plant = buildPlant({5000, 2, 1, false}, random);
  EXPECT_EQ(plant.devices.size(), 2U);
  std::set<std::pair<std::uint32_t, std::uint32_t>> slots;
  for (const PortEntry& entry : allEntries(plant)) {
    slots.emplace(entry.device, entry.slot);
  }
  EXPECT_EQ(slots.size(), 2U);
}

TEST(GeneratorPlant, RefusesSlotsWithoutPorts) {
  Random random = seededRandom(2);
  EXPECT_THROW(buildPlant({10, 4, 3, false}, random), std::invalid_argument);
}

TEST(GeneratorPlant, EndsWithAnyStreamOfWords) {
  for (const std::uint32_t word : {0U, 0x80000000U, UINT32_MAX}) {
    Random random([word] { return word; });
    EXPECT_EQ(countPorts(matricesTextOf(buildPlant({3000, 0, 0, true}, random))), 3000U);
  }
}

TEST(GeneratorPlant, CanonicalTextIsCompact) {
  const std::string text = matricesTextOf(plantOf(50000, 4));
  EXPECT_EQ(text.substr(0, 44), R"({"Config":{"version":8,"Matrices":[{"id":0,")");
  EXPECT_TRUE(text == compact(text));
}

TEST(GeneratorPlant, CanonicalMatricesAscend) {
  const Plant plant = plantOf(50000, 4);
  for (std::size_t index = 0; index < plant.matrices.size(); ++index) {
    const Matrix& matrix = plant.matrices[index];
    EXPECT_EQ(matrix.id, static_cast<std::int32_t>(index));
    EXPECT_FALSE(matrix.type);
    ASSERT_FALSE(matrix.ports.empty());
    const PortEntry& port = matrix.ports.front();
    const Device& device = plant.devices[port.device];
    EXPECT_EQ(matrix.name, device.label + "." + std::string(kPortTypes[port.type].name));
    EXPECT_EQ(matrix.serial, device.serial);
    EXPECT_TRUE(index == 0 || plant.matrices[index - 1].name < matrix.name) << matrix.name;
  }
}

TEST(GeneratorPlant, CanonicalPortsStandInOrder) {
  const Plant plant = plantOf(50000, 4);
  for (const Matrix& matrix : plant.matrices) {
    EXPECT_GE(std::min_element(
                  matrix.ports.begin(), matrix.ports.end(),
                  [](const auto& left, const auto& right) { return left.number < right.number; })
                  ->number,
              1);
    for (std::size_t index = 1; index < matrix.ports.size(); ++index) {
      EXPECT_TRUE(standsInOrder(matrix.ports[index - 1], matrix.ports[index]))
          << keyOf(plant, matrix.ports[index]);
    }
  }
}

TEST(GeneratorPlant, CanonicalNamesAreUnique) {
  const Plant plant = plantOf(50000, 4);
  std::set<std::string> devices;
  for (const Device& device : plant.devices) {
    EXPECT_TRUE(devices.insert(device.label).second) << device.label;
    EXPECT_TRUE(devices.insert(device.serial).second) << device.serial;
    EXPECT_EQ(device.label.find('.'), std::string::npos) << device.label;
  }
  std::set<std::string> names;
  std::size_t labels = 0;
  for (const PortEntry& entry : allEntries(plant)) {
    const std::string key = keyOf(plant, entry);
    EXPECT_TRUE(names.insert(key).second) << key;
    if (entry.label != 0) {
      const std::string& label = plant.labels[entry.label];
      EXPECT_TRUE(names.insert(label).second) << label;
      EXPECT_NE(label.substr(0, key.size()), key);
      ++labels;
    }
  }
  EXPECT_GT(labels, 5000U);
}

TEST(GeneratorPlant, HasEveryPrefixAndType) {
  std::set<std::uint16_t> prefixes;
  std::set<std::uint16_t> types;
  for (const PortEntry& entry : allEntries(plantOf(50000, 4))) {
    prefixes.insert(entry.prefix);
    types.insert(entry.type);
  }
  EXPECT_EQ(prefixes.size(), kPortPrefixes.size());
  EXPECT_EQ(types.size(), kPortTypes.size());
}

TEST(GeneratorMessyPlant, HasUntidyEntries) {
  const Plant plant = plantOf(1000, 8, true);
  std::set<std::string> keys;
  std::map<std::string, std::set<std::string>> keysOfLabel;
  bool zero = false;
  bool negative = false;
  bool duplicate = false;
  for (const PortEntry& entry : allEntries(plant)) {
    const std::string key = keyOf(plant, entry);
    zero = zero || entry.number == 0;
    negative = negative || entry.number < 0;
    duplicate = !keys.insert(key).second || duplicate;
    keysOfLabel[plant.labels[entry.label]].insert(key);
  }
  keysOfLabel.erase("");
  EXPECT_TRUE(zero);
  EXPECT_TRUE(negative);
  EXPECT_TRUE(duplicate);
  EXPECT_TRUE(std::any_of(keysOfLabel.begin(), keysOfLabel.end(),
                          [](const auto& label) { return label.second.size() > 1; }));
}

TEST(GeneratorMessyPlant, HasUntidyMatrices) {
  const Plant plant = plantOf(20000, 8, true);
  std::map<std::string, std::set<std::string>> serialsOfLabel;
  bool foreign = false;
  bool typed = false;
  bool disordered = false;
  for (const Matrix& matrix : plant.matrices) {
    const std::string label = matrix.name.substr(0, matrix.name.find('.'));
    serialsOfLabel[label].insert(matrix.serial);
    typed = typed || matrix.type.has_value();
    for (const PortEntry& entry : matrix.ports) {
      foreign = foreign || (plant.devices[entry.device].label != label &&
                            serialsOfLabel.count(plant.devices[entry.device].label) == 0);
    }
    disordered = disordered || (matrix.ports.size() > 1 &&
                                !standsInOrder(matrix.ports.front(), matrix.ports.back()));
  }
  EXPECT_TRUE(foreign) << "no port of a device that comes later";
  EXPECT_TRUE(typed);
  EXPECT_TRUE(disordered);
  EXPECT_EQ(plant.matrices.back().serial, "");
  EXPECT_TRUE(std::any_of(serialsOfLabel.begin(), serialsOfLabel.end(),
                          [](const auto& label) { return label.second.size() > 1; }));
}

TEST(GeneratorMessyPlant, HasUntidyText) {
  const std::string text = matricesTextOf(plantOf(1000, 8, true));
  for (const char* const found : {"{\n", "\t", "\r\n    ", "\"type\"", "\"note\""}) {
    EXPECT_NE(text.find(found), std::string::npos) << found;
  }
  EXPECT_NE(text, compact(text));
}

}  // namespace
}  // namespace quenfold::generator
