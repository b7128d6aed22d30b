// Writes "matrices.json" and "sources.json" of a database that is large in one way, or of the usual
// shape with that many ports.
//
//   generate_shape SHAPE COUNT DIR    DIR is created when missing

#include <fmt/format.h>

#include <cstddef>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "documents.h"
#include "shape.h"
#include "usual.h"

namespace {

using namespace quenfold::bench;

constexpr unsigned long kMostCount = 2000000;

std::string portKey(const ShapePort& port) {
  return fmt::format("Studio{}.{}", port.device, port.name);
}

void writePort(std::ostream& out, const ShapePort& port) {
  const std::string key = portKey(port);
  out << fmt::format(R"({{"port":"{}","label":"{}"}})", key, port.label.empty() ? key : port.label);
}

/// One matrix a device.
void writeMatrices(std::ostream& out, const Shape& shape) {
  out << R"({"Config":{"version":8,"Matrices":[)";
  const ShapePort* previous = nullptr;
  for (const ShapePort& port : shape.ports) {
    if (previous != nullptr && previous->device == port.device) {
      out << ',';
    } else {
      out << (previous != nullptr ? "]}," : "")
          << fmt::format(R"({{"id":{},"name":"Studio{}.audio","serialnumber":"VM-{}","ports":[)",
                         port.device, port.device, port.device);
    }
    writePort(out, port);
    previous = &port;
  }
  out << "]}]}}";
}

std::string recordText(const Shape& shape, std::uint32_t record) {
  std::string text =
      fmt::format("{{\n\t\t\t\t\"name\":\t\"CAM {}\",\n\t\t\t\t\"id\":\t{},\n", record, record + 1);
  text += "\t\t\t\t\"key\":\t0,\n\t\t\t\t\"val\":\t[";
  for (std::uint32_t level = 0; level < shape.levels; ++level) {
    const std::size_t place = std::size_t{record} * shape.levels + level;
    const ShapePort& port = shape.ports[place % shape.ports.size()];
    text += fmt::format("{}\"{}\"", level == 0 ? "" : ", ",
                        port.label.empty() ? portKey(port) : port.label);
  }
  return text + fmt::format(
                    "],\n\t\t\t\t\"description\":\t\"Rack {}\",\n\t\t\t\t\"category\":\t"
                    "[\"Cameras\", \"{}\", \"\", \"\", \"\", \"\"],\n\t\t\t\t\"tally\":\t"
                    "\"T{}\",\n\t\t\t\t\"redirect\":\t1\n\t\t\t}}",
                    record % 40, record % 1000, record);
}

void writeSources(std::ostream& out, const Shape& shape) {
  out << "{\n\t\"LogicalSources\":\t{\n\t\t\"version\":\t10,\n\t\t\"levelKeys\":\t[";
  for (std::uint32_t level = 1; level <= shape.levels; ++level) {
    out << (level == 1 ? "" : ", ") << level;
  }
  out << "],\n\t\t\"LogicalSource\":\t[";
  for (std::uint32_t record = 0; record < shape.records; ++record) {
    out << (record == 0 ? "" : ", ") << recordText(shape, record);
  }
  out << "]\n\t}\n}";
}

void writeShape(const Shape& shape, const std::filesystem::path& folder) {
  writeDocument(folder / "matrices.json", [&](std::ostream& out) { writeMatrices(out, shape); });
  writeDocument(folder / "sources.json", [&](std::ostream& out) { writeSources(out, shape); });
}

void generate(const std::vector<std::string>& arguments) {
  const unsigned long count = arguments.size() == 3 ? std::stoul(arguments[1]) : 0;
  if (count == 0 || count > kMostCount) {
    throw std::invalid_argument("usage: generate_shape SHAPE COUNT DIR; shapes:\n  usual\n" +
                                shapeNames());
  }
  const std::filesystem::path folder = arguments[2];
  std::filesystem::create_directories(folder);
  if (arguments[0] == "usual") {
    writeUsual(static_cast<std::uint32_t>(count), folder);
  } else {
    writeShape(buildShape(arguments[0], static_cast<std::uint32_t>(count)), folder);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    generate({argv + 1, argv + argc});
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "generate_shape: " << failure.what() << '\n';
    return 1;
  }
}
