// The input chooses a canonical plant and one of its tables. What packing loses is lost at once:
// the second and third packed files are equal. (A messy plant may lose more each time: ports wider
// than 32 bits, and labels of several ports of which the one that counts is no port key.)

#include <string>
#include <utility>

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
  std::string stem;  // of its packed files
};

Table drawTable(const generator::Plant& plant, generator::Random& random) {
  const bool sources = random.percent(50);
  const generator::LogicalTable table = generator::buildLogicalTable(
      plant, sources ? generator::Direction::source : generator::Direction::destination, random);
  std::string text;
  generator::writeLogicalTable(plant, table, [&text](std::string_view piece) { text += piece; });
  return {std::move(text), sources ? "logicalSources" : "logicalDestinations"};
}

std::string packedTexts(const std::string& legacy, const std::string& stem) {
  convertVelmoraToPacked(fuzz::workFolder(), "", legacy, fuzz::workFolder());
  return fuzz::bytesOf(stem + "Ports.json") + fuzz::bytesOf(stem + "Labels.json") +
         fuzz::bytesOf(stem + "LegacyCategories.json");
}

std::string packedAgain(const std::string& stem) {
  return packedTexts(convertPackedToVelmora(stem, fuzz::workFolder()).first, stem);
}

}  // namespace
}  // namespace quenfold

void quenfold::fuzz::fuzzOne(std::string_view input) {
  generator::Random random = randomOf(input);
  mustSucceed([&] {
    const generator::Plant plant = drawPlant(random);
    convertMatricesToPacked("matrices.json", matricesTextOf(plant), workFolder());
    const Table table = drawTable(plant, random);
    packedTexts(table.text, table.stem);
    const std::string second = packedAgain(table.stem);
    requireEqual(second, packedAgain(table.stem), "the second and third packed files are equal");
    return true;
  });
}
