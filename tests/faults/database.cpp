#include "faults/database.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quenfold::faults {
namespace {

namespace fs = std::filesystem;

// An index grows when its first 64 places are half taken, and again at 65 and 129 items.
constexpr int kItems = 200;

// Of names and texts: so many make each file larger than one read of the program.
constexpr std::size_t kTextBytes = 360;
constexpr std::uintmax_t kReadChunk = 65536;

constexpr std::array<std::string_view, 8> kReadFiles = {
    "in/matrices.json",
    "in/sources.json",
    "packed/dbpack_deviceLabels.json",
    "packed/dbpack_matrices.json",
    "packed/dbpack_portLabels.json",
    "packed/logicalSourcesPorts.json",
    "packed/logicalSourcesLabels.json",
    "packed/logicalSourcesLegacyCategories.json"};

// The ports of one device: each pattern stands for many, by number, in a list of another kind.
constexpr std::array<std::string_view, 5> kFramePorts = {
    "ports.in[{}].audio.ch1", "patterns.p{}-in[1].audio.ch1", "types.in[1].t{}.ch1",
    "channels.in[1].audio.ch{}", "slot{}.in[1].audio.ch1"};

std::string longText(std::string_view front, int number) {
  std::string text = fmt::format("{} {} ", front, number);
  text.resize(kTextBytes, 'x');
  return text;
}

/// The one port of a hall.
std::string hallPort(int number) {
  return fmt::format("{}.{}.{}[1].audio.ch1", longText("Hall", number), longText("slot", number),
                     number % 2 == 0 ? "in" : "out");
}

std::string portEntry(std::string_view port, std::string_view label) {
  return fmt::format(R"({{"port":"{}","label":"{}"}})", port, label);
}

std::string matrixOf(int id, std::string_view device, const std::vector<std::string>& ports) {
  return fmt::format(R"({{"id":{},"name":"{}.audio","serialnumber":"VM-{}","ports":[{}]}})", id,
                     device, id, fmt::join(ports, ","));
}

std::string frameMatrix() {
  std::vector<std::string> ports;
  for (const std::string_view pattern : kFramePorts) {
    for (int number = 1; number <= kItems; ++number) {
      const std::string port = "Frame." + fmt::format(fmt::runtime(pattern), number);
      ports.push_back(portEntry(port, port));
    }
  }
  return matrixOf(0, "Frame", ports);
}

std::string matricesText() {
  std::vector<std::string> matrices = {frameMatrix()};
  for (int number = 1; number <= kItems; ++number) {
    matrices.push_back(matrixOf(number, longText("Hall", number),
                                {portEntry(hallPort(number), longText("Vox", number))}));
  }
  return fmt::format(R"({{"Config":{{"version":8,"Matrices":[{}]}}}})", fmt::join(matrices, ",\n"));
}

/// By a label and by a port.
std::string sourceOf(int number) {
  return fmt::format(
      R"({{"name":"{}","id":{},"key":0,"val":["{}","","Frame.ports.in[{}].audio.ch1"],)"
      R"("description":"{}","category":["{}","","","","",""],"tally":"red","redirect":1}})",
      longText("Camera", number), number, longText("Vox", number), number, longText("Rack", number),
      longText("Band", number));
}

std::string sourcesText() {
  std::vector<std::string> sources;
  for (int number = 1; number <= kItems; ++number) {
    sources.push_back(sourceOf(number));
  }
  return fmt::format(
      R"({{"LogicalSources":{{"version":10,"levelKeys":[1,2,3],"LogicalSource":[{}]}}}})",
      fmt::join(sources, ",\n"));
}

void requirePacked(const RunPlan& plan) {
  const RunResult result = runProgram(plan);
  if (result.status != 0) {
    throw std::runtime_error("the database does not pack: " + result.err);
  }
}

}  // namespace

void writeLargeDatabase(const fs::path& folder) {
  fs::create_directories(folder);
  std::ofstream(folder / "matrices.json", std::ios::binary) << matricesText();
  std::ofstream(folder / "sources.json", std::ios::binary) << sourcesText();
}

void packDatabase(const RunPlan& plan, const fs::path& folder) {
  fs::create_directories(folder / "out");
  fs::create_directories(folder / "packed");
  fs::current_path(folder);
  RunPlan pack = plan;
  pack.arguments = {"-f", "matrices", "-p", "-s", "in", "-i", "matrices.json", "-d", "packed"};
  requirePacked(pack);
  pack.arguments = {"-f", "logicalio",       "-p", "-s",    "packed",
                    "-i", "in/sources.json", "-d", "packed"};
  requirePacked(pack);
}

void requireSeveralReads(const fs::path& folder) {
  for (const std::string_view file : kReadFiles) {
    if (fs::file_size(folder / file) <= kReadChunk) {
      throw std::runtime_error(fmt::format("one read takes all of {}", file));
    }
  }
}

}  // namespace quenfold::faults
