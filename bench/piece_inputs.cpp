#include "piece_inputs.h"

#include <unistd.h>

#include <filesystem>
#include <string_view>

#include "app/files.h"
#include "generator/logical_text.h"
#include "generator/matrices_text.h"
#include "matrices/pack.h"

namespace quenfold::bench {
namespace {

using namespace generator;

constexpr std::uint32_t kPorts = 20000;
constexpr std::uint32_t kSeed = 1;

/// A folder that goes when the process ends.
struct Scratch {
  std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("quenfold-pieces." + std::to_string(getpid()));

  Scratch() { std::filesystem::create_directories(path); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
};

std::vector<std::string> portKeysOf(const Plant& plant) {
  std::vector<std::string> keys;
  for (const Matrix& matrix : plant.matrices) {
    for (const PortEntry& entry : matrix.ports) {
      appendPortKey(keys.emplace_back(), plant, entry);
    }
  }
  return keys;
}

PieceInputs makeInputs() {
  static const Scratch scratch;
  Random random = seededRandom(kSeed);
  PlantParameters parameters;
  parameters.ports = kPorts;
  const Plant plant = buildPlant(parameters, random);
  PieceInputs inputs;
  inputs.folder = scratch.path.string() + "/";
  inputs.portKeys = portKeysOf(plant);
  writeMatrices(plant, [&](std::string_view piece) { inputs.matrices += piece; });
  const LogicalTable table = buildLogicalTable(plant, generator::Direction::source, random);
  writeLogicalTable(plant, table, [&](std::string_view piece) { inputs.sources += piece; });
  convertMatricesToPacked("matrices.json", inputs.matrices, inputs.folder);
  inputs.packedMatrices = readFile(inputs.folder + "dbpack_matrices.json");
  return inputs;
}

}  // namespace

const PieceInputs& pieceInputs() {
  static const PieceInputs inputs = makeInputs();
  return inputs;
}

}  // namespace quenfold::bench
