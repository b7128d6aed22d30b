#include "matrices/legacy_reader.h"

#include <stdexcept>
#include <utility>

#include "app/error.h"
#include "app/stage_timer.h"
#include "app/text.h"
#include "json/access.h"
#include "matrices/format.h"

namespace quenfold::packing {
namespace {

const JsonValue& portsOf(const JsonValue& matrix) {
  const JsonValue* const ports = findMember(matrix, kMatrixPorts);
  if (ports == nullptr) {
    throw runtimeError("matrices.json matrix ports not found.");
  }
  if (!ports->IsArray()) {
    throw runtimeError("matrices.json matrix ports is not array.");
  }
  return *ports;
}

/// The device is named by what stands before the first "." of the matrix's name.
void addDeviceLabel(MatricesModel& model, std::string_view matrixName, std::string_view serial) {
  if (matrixName.empty() || serial.empty()) {
    return;
  }
  const std::string_view label = matrixName.substr(0, matrixName.find('.'));
  if (!label.empty() && model.deviceLabels.find(label) == nullptr) {
    model.deviceLabels.append({label, serial});
  }
}

std::int32_t typeOf(const JsonValue& matrix) {
  const JsonValue* const type = findMember(matrix, kMatrixType);
  return type != nullptr && type->IsNumber() ? jsonToInt32(*type) : 0;
}

/// Kept on purpose: a label that merely begins with the whole port string is no alias.
bool isAlias(std::string_view label, std::string_view port) { return !beginsWith(label, port); }

void addPortLabel(MatricesModel& model, std::string_view port, std::string_view label) {
  const std::size_t dot = port.find('.');
  if (dot == std::string_view::npos) {
    model.notices << "Port alias error - port string badly formed";
    return;
  }
  const DeviceLabelEntry* const device = model.deviceLabels.find(port.substr(0, dot));
  if (device == nullptr) {
    model.notices << "Port alias error - port label not found.";
    return;
  }
  model.replaced.take(device->serial.size());
  model.portLabels.push_back({device->serial, port.substr(dot), label});
}

void readPort(const JsonValue& entry, MatricesModel& model, PortCursor& cursor) {
  if (!entry.IsObject()) {
    throw runtimeError("matrices.json matrix ports entry is not object.");
  }
  const std::string_view port = jsonGetText(entry, kPortName);
  const std::string_view label = jsonGetText(entry, kPortLabel);
  if (isAlias(label, port)) {
    addPortLabel(model, port, label);
  }
  addPort(model.devices, cursor, port, model.notices);
}

void readMatrix(const JsonValue& matrix, MatricesModel& model) {
  const std::string_view name = jsonGetText(matrix, kMatrixName);
  const std::string_view serial = jsonGetText(matrix, kMatrixSerial);
  addDeviceLabel(model, name, serial);
  const std::int32_t id = jsonGetInt(matrix, kMatrixId);
  model.details.push_back({name, id, typeOf(matrix)});
  PortCursor cursor;
  std::size_t position = 0;
  for (const JsonValue& entry : portsOf(matrix).GetArray()) {
    model.reached.port = position++;
    readPort(entry, model, cursor);
  }
}

/// The document is released when the reading ends.
void readDocument(MatricesModel& model) {
  TimePoint stageStart = now();
  const JsonDocument root = parseJson(model.text);
  logElapsed(stageStart, "decoding matrices.json");
  readMatrices(matricesOf(root), model);
}

}  // namespace

const JsonValue& matricesOf(const JsonDocument& root) {
  if (!root.IsObject()) {
    // Kept on purpose: "array".
    throw runtimeError("matrices.json root object is not array.");
  }
  const JsonValue* const config = findMember(root, kConfig);
  if (config == nullptr) {
    throw runtimeError("matrices.json Config not found.");
  }
  if (!config->IsObject()) {
    throw runtimeError("matrices.json Config is not object.");
  }
  const JsonValue* const matrices = findMember(*config, kMatrices);
  if (matrices == nullptr) {
    throw runtimeError("matrices.json Config.Matrices not found.");
  }
  if (!matrices->IsArray()) {
    throw runtimeError("matrices.json Config.Matrices is not array.");
  }
  return *matrices;
}

void readMatrices(const JsonValue& matrices, MatricesModel& model) {
  std::size_t position = 0;
  for (const JsonValue& matrix : matrices.GetArray()) {
    model.reached = {position++, std::nullopt};
    readMatrix(matrix, model);
  }
}

void readMatrices(const std::string& inputName, std::string inputText, MatricesModel& model) {
  if (inputName == kPortLabelsFile) {
    throw runtimeError("portLabels not supported");
  }
  if (inputName != kMatricesFile) {
    return;
  }
  model.text = std::move(inputText);
  try {
    readDocument(model);
  } catch (const std::runtime_error& failure) {
    model.notices << "Error decoding matrices.json: " << failure.what() << '\n';
  }
}

}  // namespace quenfold::packing
