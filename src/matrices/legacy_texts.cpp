#include "matrices/legacy_texts.h"

#include <string_view>

#include "matrices/legacy_format.h"

namespace quenfold::unpacking {
namespace {

constexpr int kVersion = 8;

/// One entry of a hand-built list: {"k":"<key>","v":"<value>"}, and the two names in it.
struct PairNames {
  std::string_view key;
  std::string_view value;
};

constexpr PairNames kKeyValue = {R"({"k":")", R"(","v":")"};
constexpr PairNames kPortAndLabel = {R"({"port":")", R"(","label":")"};
constexpr std::string_view kPairEnd = R"("},)";

void appendPair(JsonBuffer& text, const PairNames& names, std::string_view key,
                std::string_view value) {
  append(text, names.key);
  append(text, key);
  append(text, names.value);
  append(text, value);
  append(text, kPairEnd);
}

/// "[", an entry that ends in "," for every port, and "]" in place of the last ",".
template <typename Ports, typename AppendEntry>
JsonBuffer listText(const Ports& ports, AppendEntry appendEntry) {
  JsonBuffer text;
  append(text, "[");
  for (const auto& port : ports) {
    appendEntry(text, port);
  }
  if (!ports.empty()) {
    text.Pop(1);
  }
  append(text, "]");
  return text;
}

void writePort(CompactJsonWriter& writer, const UnpackedPort& port) {
  writer.StartObject();
  writer.Key(kPortName);
  writeString(writer, port.name);
  writer.Key(kPortLabel);
  writeString(writer, port.shownName());
  writer.EndObject();
}

void writeMatrix(CompactJsonWriter& writer, int id, const std::string& name,
                 const MatrixEntry& matrix) {
  writer.StartObject();
  writer.Key(kMatrixId);
  writer.Int(id);
  writer.Key(kMatrixName);
  writeString(writer, name);
  writer.Key(kMatrixSerial);
  writeString(writer, matrix.serialnumber);
  writer.Key(kMatrixPorts);
  writer.StartArray();
  for (const UnpackedPort* const port : matrix.ports) {
    writePort(writer, *port);
  }
  writer.EndArray();
  writer.EndObject();
}

}  // namespace

JsonBuffer matricesText(const std::map<std::string, MatrixEntry>& matrices) {
  JsonBuffer text;
  CompactJsonWriter writer(text);
  writer.StartObject();
  writer.Key(kConfig);
  writer.StartObject();
  writer.Key("version");
  writer.Int(kVersion);
  writer.Key(kMatrices);
  writer.StartArray();
  int id = 0;
  for (const auto& [name, matrix] : matrices) {
    writeMatrix(writer, id++, name, matrix);
  }
  writer.EndArray();
  writer.EndObject();
  writer.EndObject();
  return text;
}

JsonBuffer availableText(const PortReferences& ports) {
  return listText(ports, [](JsonBuffer& text, const UnpackedPort* port) {
    appendPair(text, kKeyValue, port->shownName(), port->name);
  });
}

JsonBuffer portLabelsText(const std::vector<UnpackedPort>& ports) {
  return listText(ports, [](JsonBuffer& text, const UnpackedPort& port) {
    appendPair(text, kKeyValue, port.name, port.serialName);
  });
}

JsonBuffer userPortLabelsText(const std::vector<UnpackedPort>& ports) {
  return listText(ports, [](JsonBuffer& text, const UnpackedPort& port) {
    appendPair(text, kPortAndLabel, port.name, port.shownName());
  });
}

}  // namespace quenfold::unpacking
