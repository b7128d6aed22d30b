#include "properties/runs.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "app/files.h"
#include "generator/logical_io.h"
#include "generator/logical_text.h"
#include "generator/matrices_text.h"
#include "generator/plant.h"
#include "logicalio/pack.h"
#include "logicalio/unpack.h"
#include "matrices/pack.h"
#include "matrices/unpack.h"
#include "properties/messy_database.h"

namespace quenfold::properties {
namespace {

std::uint32_t numberIn(const char* variable, std::uint32_t otherwise) {
  const char* const text = std::getenv(variable);
  return text == nullptr ? otherwise : static_cast<std::uint32_t>(std::stoul(text));
}

/// One of the plants that the measurements are made with, small.
void writePlant(const std::string& folder, generator::Random& random) {
  generator::PlantParameters parameters;
  parameters.ports = random.between(20, 120);
  parameters.devices = random.between(1, 4);
  parameters.slots = 2;
  parameters.messy = random.percent(60);
  const generator::Plant plant = generator::buildPlant(parameters, random);
  const auto write = [&](const char* name, auto writeText) {
    std::string text;
    writeText([&text](std::string_view piece) { text += piece; });
    writeBytes(joinPath(folder, name), text);
  };
  write("matrices.json",
        [&](const generator::TextSink& sink) { generator::writeMatrices(plant, sink); });
  const auto writeTable = [&](const char* name, generator::Direction direction) {
    const generator::LogicalTable table = generator::buildLogicalTable(plant, direction, random);
    write(name, [&](const generator::TextSink& sink) {
      generator::writeLogicalTable(plant, table, sink);
    });
  };
  writeTable("sources.json", generator::Direction::source);
  writeTable("destinations.json", generator::Direction::destination);
}

void packTable(const std::string& legacy, const std::string& packed, const std::string& file) {
  const std::string path = joinPath(legacy, file);
  if (!std::filesystem::exists(path)) {
    return;
  }
  try {
    convertVelmoraToPacked(packed, "", readFile(path), packed);
  } catch (const std::runtime_error&) {
    return;  // as the check has to tell
  }
}

}  // namespace

Seeds seedsToTry(std::uint32_t count) {
  const std::uint32_t tried = numberIn("QUENFOLD_PROPERTY_SEEDS", count);
  return {numberIn("QUENFOLD_PROPERTY_FIRST", 1), tried, tried >= count};
}

void writeBytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

void writeLegacy(const std::string& folder, std::uint32_t seed) {
  generator::Random random = generator::seededRandom(seed);
  if (seed % 8 == 0) {
    writePlant(folder, random);
    return;
  }
  Untidiness mess(random);
  const MessyPlant plant = makePlant(random, mess);
  writeBytes(joinPath(folder, "matrices.json"), matricesText(plant, random, mess));
  if (random.percent(85)) {
    writeBytes(joinPath(folder, "sources.json"), tableText(plant, true, random, mess));
  }
  if (random.percent(60)) {
    writeBytes(joinPath(folder, "destinations.json"), tableText(plant, false, random, mess));
  }
}

Hush::Hush() : told_(std::cerr.rdbuf(nullptr)) {}

Hush::~Hush() {
  std::cerr.rdbuf(told_);
  std::cerr.clear();
}

void packWithQuenfold(const std::string& legacy, const std::string& packed) {
  std::filesystem::create_directories(packed);
  convertMatricesToPacked("matrices.json", readFile(joinPath(legacy, "matrices.json")), packed);
  packTable(legacy, packed, "sources.json");
  packTable(legacy, packed, "destinations.json");
}

void unpackWithQuenfold(const std::string& packed, const std::string& legacy) {
  convertPackedMatrices(packed,
                        {"matrices.json", "availableInputs.json", "availableOutputs.json",
                         "portLabels.json", "userPortLabels.json"},
                        legacy);
  const auto unpackTable = [&](const char* stem, const char* file) {
    if (std::filesystem::exists(joinPath(packed, std::string(stem) + "Ports.json"))) {
      writeBytes(joinPath(legacy, file), convertPackedToVelmora(stem, packed).first);
    }
  };
  unpackTable("logicalSources", "sources.json");
  unpackTable("logicalDestinations", "destinations.json");
}

}  // namespace quenfold::properties
