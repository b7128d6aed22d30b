// Writes a made-up routing database, the same for the same arguments on every host.

#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>

#include "generator/logical_io.h"
#include "generator/logical_text.h"
#include "generator/matrices_text.h"
#include "generator/plant.h"
#include "generator/random.h"

namespace {

using namespace quenfold::generator;

constexpr std::uint32_t kFewestPorts = 10;
constexpr std::uint32_t kMostPorts = 2000000;

constexpr std::string_view kUsage =
    "usage: generate_database --ports N --seed S [--devices D] [--slots S] [--messy] [--out DIR]\n"
    "  --ports N    port entries of matrices.json, 10 to 2000000\n"
    "  --seed S     the same seed gives the same database\n"
    "  --devices D  number of devices; by default as the size asks for\n"
    "  --slots S    slots of a device; by default as the size asks for\n"
    "  --messy      untidy instead of canonical: gaps, duplicates, any order and white space\n"
    "  --out DIR    where to write matrices.json, sources.json and destinations.json;\n"
    "               created when missing, by default the current directory\n";

struct Arguments {
  PlantParameters plant;
  std::uint32_t seed = 0;
  std::filesystem::path folder = ".";
};

/// The values of the command line, taken one after the other.
class ArgumentList {
 public:
  ArgumentList(int count, char** values) : next_(values + 1), end_(values + count) {}

  [[nodiscard]] bool empty() const { return next_ >= end_; }

  std::string next() {
    if (empty()) {
      throw std::invalid_argument("a value is missing");
    }
    return *next_++;
  }

  std::uint32_t number(std::uint32_t low, std::uint32_t high) {
    const std::string text = next();
    const bool digits = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
    const std::uint64_t value = digits && text.size() <= 10 ? std::stoull(text) : UINT64_MAX;
    if (value < low || value > high) {
      throw std::invalid_argument("not a number in range: \"" + text + "\"");
    }
    return static_cast<std::uint32_t>(value);
  }

 private:
  char** next_;
  char** end_;
};

Arguments parseArguments(ArgumentList list) {
  Arguments arguments;
  bool hasSeed = false;
  arguments.plant.ports = 0;
  while (!list.empty()) {
    const std::string option = list.next();
    if (option == "--ports") {
      arguments.plant.ports = list.number(kFewestPorts, kMostPorts);
    } else if (option == "--seed") {
      arguments.seed = list.number(0, std::numeric_limits<std::uint32_t>::max());
      hasSeed = true;
    } else if (option == "--devices") {
      arguments.plant.devices = list.number(1, kMostPorts);
    } else if (option == "--slots") {
      arguments.plant.slots = list.number(1, kMostPorts);
    } else if (option == "--messy") {
      arguments.plant.messy = true;
    } else if (option == "--out") {
      arguments.folder = list.next();
    } else {
      throw std::invalid_argument("unknown option \"" + option + "\"");
    }
  }
  if (arguments.plant.ports == 0 || !hasSeed) {
    throw std::invalid_argument("--ports and --seed are required");
  }
  return arguments;
}

/// `write` puts a document into the sink that it is given.
template <typename Write>
void writeDocument(const std::filesystem::path& path, Write write) {
  std::ofstream file(path, std::ios::binary);
  write([&file](std::string_view piece) { file << piece; });
  file.close();
  if (!file) {
    throw std::runtime_error("error while writing file: " + path.string());
  }
}

void writeDatabase(const Arguments& arguments, const Plant& plant, Random& random) {
  std::filesystem::create_directories(arguments.folder);
  writeDocument(arguments.folder / "matrices.json",
                [&](const TextSink& sink) { writeMatrices(plant, sink); });
  const auto writeTable = [&](const char* name, Direction direction) {
    const LogicalTable table = buildLogicalTable(plant, direction, random);
    writeDocument(arguments.folder / name,
                  [&](const TextSink& sink) { writeLogicalTable(plant, table, sink); });
  };
  writeTable("sources.json", Direction::source);
  writeTable("destinations.json", Direction::destination);
}

}  // namespace

int main(int argc, char* argv[]) {
  try {
    const Arguments arguments = parseArguments(ArgumentList(argc, argv));
    Random random = seededRandom(arguments.seed);
    const Plant plant = buildPlant(arguments.plant, random);
    writeDatabase(arguments, plant, random);
    return 0;
  } catch (const std::invalid_argument& failure) {
    std::cerr << "generate_database: " << failure.what() << '\n' << kUsage;
  } catch (const std::exception& failure) {
    std::cerr << "generate_database: " << failure.what() << '\n';
  }
  return 1;
}
