// The input chooses a canonical plant and one of its tables: packing the table and unpacking it
// gives its text back, but for the level keys, which are in the packed file alone. Without them the
// table loses its last empty ports, and nothing more after that: the second and third packed files
// are equal. (A messy plant may lose more each time: ports wider than 32 bits, and labels of
// several ports of which the one that counts is no port key.)

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "generator/logical_io.h"
#include "generator/logical_text.h"
#include "input_files.h"
#include "logicalio/pack.h"
#include "logicalio/unpack.h"
#include "matrices/pack.h"
#include "random_plant.h"
#include "target.h"

namespace quenfold {
namespace {

struct Table {
  std::string text;
  std::string levelKeys;    // a line of the text
  std::string withoutKeys;  // the other lines
  std::string stem;         // of its packed files
};

std::int32_t drawNumber(generator::Random& random) {
  return static_cast<std::int32_t>(random.below(std::numeric_limits<std::uint32_t>::max()));
}

/// The generator's ids ascend from 1, its redirects are below 8, its categories three at most.
void widen(generator::LogicalTable& table, generator::Random& random) {
  const auto flippedBits = static_cast<std::uint32_t>(drawNumber(random));
  for (generator::LogicalRecord& record : table.records) {
    record.id = static_cast<std::int32_t>(static_cast<std::uint32_t>(record.id) ^ flippedBits);
    if (random.percent(20)) {
      record.redirect = drawNumber(random);
      for (std::string& entry : record.category) {
        entry = fmt::format("Group {}", drawNumber(random));
      }
    }
  }
}

Table drawTable(const generator::Plant& plant, generator::Random& random) {
  const bool sources = random.percent(50);
  generator::LogicalTable drawn = generator::buildLogicalTable(
      plant, sources ? generator::Direction::source : generator::Direction::destination, random);
  widen(drawn, random);
  Table table;
  generator::writeLogicalTable(plant, drawn,
                               [&table](std::string_view piece) { table.text += piece; });
  const std::size_t line = table.text.find("\t\t\"levelKeys\"");
  table.levelKeys = table.text.substr(line, table.text.find('\n', line) + 1 - line);
  table.withoutKeys = std::string(table.text).erase(line, table.levelKeys.size());
  table.stem = sources ? "logicalSources" : "logicalDestinations";
  return table;
}

std::string packedTexts(const std::string& legacy, const std::string& stem) {
  convertVelmoraToPacked(fuzz::workFolder(), "", legacy, fuzz::workFolder());
  return fuzz::bytesOf(stem + "Ports.json") + fuzz::bytesOf(stem + "Labels.json") +
         fuzz::bytesOf(stem + "LegacyCategories.json");
}

std::string unpackedText(const std::string& stem) {
  return convertPackedToVelmora(stem, fuzz::workFolder()).first;
}

void requireWayBack(const Table& table) {
  const std::string first = packedTexts(table.text, table.stem);
  fuzz::require(first.find(table.levelKeys) != std::string::npos, "the level keys are packed");
  const std::string legacy = unpackedText(table.stem);
  fuzz::requireEqual(legacy, table.withoutKeys, "a canonical table comes back");
  const std::string second = packedTexts(legacy, table.stem);
  fuzz::requireEqual(second, packedTexts(unpackedText(table.stem), table.stem),
                     "the second and third packed files are equal");
}

}  // namespace
}  // namespace quenfold

namespace quenfold::fuzz {
namespace {

void fuzzLogicalioRoundTrip(std::string_view input) {
  generator::Random random = randomOf(input);
  mustSucceed([&] {
    const generator::Plant plant = drawPlant(random);
    convertMatricesToPacked("matrices.json", matricesTextOf(plant), workFolder());
    requireWayBack(drawTable(plant, random));
    return true;
  });
}

const Target kLogicalioRoundTrip("logicalio_round_trip", fuzzLogicalioRoundTrip);

}  // namespace
}  // namespace quenfold::fuzz
