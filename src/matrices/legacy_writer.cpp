// What is written, without any white space; ports in the order of the tree, matrices by name:
//
//   matrices.json           {"Config":{"version":8,"Matrices":[
//                             {"id":0,"name":"<device>.<type>","serialnumber":"<serial>","ports":[
//                               {"port":"<port>","label":"<shown name>"},...]},...]}}
//   availableInputs.json    [{"k":"<shown name>","v":"<port>"},...], the sources alone
//   availableOutputs.json   the same of the destinations
//   portLabels.json         [{"k":"<port>","v":"<port with the serial as its device>"},...]
//   userPortLabels.json     [{"port":"<port>","label":"<shown name>"},...]
//
// The first is JSON by the library; the others are put together by hand.

#include "matrices/legacy_writer.h"

#include <fmt/format.h>

#include "matrices/format.h"

namespace quenfold::unpacking {
namespace {

constexpr std::string_view kEntryEnd = "\"}";

/// The library refuses longer texts than it can count: now, and not between two files.
std::size_t countableName(const ExpandedTree& expanded) {
  for (const auto& [name, matrix] : expanded.matrices) {
    static_cast<void>(jsonLength(name.size()));
  }
  return jsonLength(expanded.longestName);
}

}  // namespace

LegacyWriter::EntryMarks LegacyWriter::entryMarks(const char* first, const char* second) {
  return {fmt::format(R"({{"{}":")", first), fmt::format(R"(","{}":")", second)};
}

LegacyWriter::LegacyWriter(const ExpandedTree& expanded)
    : expanded_(expanded),
      printer_(countableName(expanded)),
      keyAndValue_(entryMarks(kEntryKey, kEntryValue)),
      portAndLabel_(entryMarks(kPortName, kPortLabel)) {}

void LegacyWriter::writePorts(const MatrixEntry& matrix) {
  json_.StartArray();
  for (const ExpandedBlock* const block : matrix.blocks) {
    forEachPort(expanded_, *block, printer_, [&](const UnpackedPort& port) {
      json_.StartObject();
      json_.Key(kPortName);
      writeString(json_, port.name);
      json_.Key(kPortLabel);
      writeString(json_, port.shownName());
      json_.EndObject();
    });
  }
  json_.EndArray();
}

void LegacyWriter::writeMatrices(OutputFile& out) {
  json_.startText(out);
  json_.StartObject();
  json_.Key(kConfig);
  json_.StartObject();
  json_.Key(kVersion);
  json_.Int(kMatricesVersion);
  json_.Key(kMatrices);
  json_.StartArray();
  std::uint64_t id = 0;
  for (const auto& [name, matrix] : expanded_.matrices) {
    json_.StartObject();
    json_.Key(kMatrixId);
    json_.Uint64(id++);
    json_.Key(kMatrixName);
    writeString(json_, name);
    json_.Key(kMatrixSerial);
    writeString(json_, matrix.serialnumber);
    json_.Key(kMatrixPorts);
    writePorts(matrix);
    json_.EndObject();
  }
  json_.EndArray();
  json_.EndObject();
  json_.EndObject();
}

/// `only` restricts the list to ports of that direction.
template <typename AppendEntry>
void LegacyWriter::writeList(OutputFile& out, std::optional<Direction> only,
                             AppendEntry appendEntry) {
  out.append('[');
  std::string_view separator;
  for (const ExpandedBlock& block : expanded_.blocks) {
    if (!only || block.ports.group->direction == *only) {
      forEachPort(expanded_, block, printer_, [&](const UnpackedPort& port) {
        out.append(separator);
        appendEntry(port);
        out.append(kEntryEnd);
        separator = ",";
      });
    }
  }
  out.append(']');
}

void LegacyWriter::writeAvailable(OutputFile& out, Direction direction) {
  writeList(out, direction, [&](const UnpackedPort& port) {
    out.append(keyAndValue_.first);
    out.append(port.shownName());
    out.append(keyAndValue_.second);
    out.append(port.name);
  });
}

void LegacyWriter::writeAvailableInputs(OutputFile& out) {
  writeAvailable(out, Direction::kSource);
}

void LegacyWriter::writeAvailableOutputs(OutputFile& out) {
  writeAvailable(out, Direction::kDestination);
}

void LegacyWriter::writePortLabels(OutputFile& out) {
  writeList(out, std::nullopt, [&](const UnpackedPort& port) {
    out.append(keyAndValue_.first);
    out.append(port.name);
    out.append(keyAndValue_.second);
    out.append(port.serial);
    out.append(port.suffix);
  });
}

void LegacyWriter::writeUserPortLabels(OutputFile& out) {
  writeList(out, std::nullopt, [&](const UnpackedPort& port) {
    out.append(portAndLabel_.first);
    out.append(port.name);
    out.append(portAndLabel_.second);
    out.append(port.shownName());
  });
}

}  // namespace quenfold::unpacking
