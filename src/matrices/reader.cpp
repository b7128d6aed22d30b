#include "matrices/reader.h"

#include <iostream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "app/error.h"
#include "app/stage_timer.h"
#include "json/access.h"
#include "json/document.h"
#include "matrices/legacy_format.h"

namespace quenfold::packing {
namespace {

/// The "Config"."Matrices" array. Kept on purpose: the root's message says array.
const JsonValue& matricesOf(const JsonDocument& root) {
  if (!root.IsObject()) {
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

void addDeviceLabel(MatricesModel& model, const std::string& matrixName, std::string serial) {
  if (matrixName.empty() || serial.empty()) {
    return;
  }
  const std::string_view label = std::string_view(matrixName).substr(0, matrixName.find('.'));
  if (!label.empty() && model.deviceLabels.find(label) == nullptr) {
    model.deviceLabels.append({std::string(label), std::move(serial)});
  }
}

std::int32_t matrixType(const JsonValue& matrix) {
  const JsonValue* const type = findMember(matrix, kMatrixType);
  return type != nullptr && type->IsNumber() ? jsonToInt32(*type) : 0;
}

/// Kept on purpose: a label that merely begins with the whole port string is no alias.
bool isAlias(std::string_view label, std::string_view port) {
  return label.substr(0, port.size()) != port;
}

void addPortLabel(MatricesModel& model, std::string_view port, std::string_view label) {
  const std::size_t dot = port.find('.');
  if (dot == std::string_view::npos) {
    std::cerr << "Port alias error - port string badly formed";
    return;
  }
  const DeviceLabelEntry* const device = model.deviceLabels.find(port.substr(0, dot));
  if (device == nullptr) {
    std::cerr << "Port alias error - port label not found.";
    return;
  }
  model.replaced.take(device->serial.size());
  std::string key = device->serial;
  model.portLabels.push_back({std::move(key.append(port.substr(dot))), std::string(label)});
}

void readPort(const JsonValue& entry, MatricesModel& model) {
  if (!entry.IsObject()) {
    throw runtimeError("matrices.json matrix ports entry is not object.");
  }
  const std::string_view port = jsonViewString(entry, kPortName);
  const std::string_view label = jsonViewString(entry, kPortLabel);
  if (isAlias(label, port)) {
    addPortLabel(model, port, label);
  }
  addPort(model.devices, splitPort(port));
}

void readMatrix(const JsonValue& matrix, MatricesModel& model) {
  std::string name = jsonGetString(matrix, kMatrixName);
  addDeviceLabel(model, name, jsonGetString(matrix, kMatrixSerial));
  const std::int32_t id = jsonGetInt(matrix, kMatrixId);
  model.details.push_back({std::move(name), id, matrixType(matrix)});
  for (const JsonValue& port : portsOf(matrix).GetArray()) {
    readPort(port, model);
  }
}

void readText(std::string& text, MatricesModel& model) {
  TimePoint stageStart = now();
  const JsonDocument root = parseJson(text);
  logElapsed(stageStart, "decoding matrices.json");
  for (const JsonValue& matrix : matricesOf(root).GetArray()) {
    readMatrix(matrix, model);
  }
}

}  // namespace

void readMatrices(const std::string& inputName, std::string inputText, MatricesModel& model) {
  if (inputName == kPortLabelsFile) {
    throw runtimeError("portLabels not supported");
  }
  if (inputName != kMatricesFile) {
    return;
  }
  try {
    readText(inputText, model);
  } catch (const std::runtime_error& failure) {
    std::cerr << "Error decoding matrices.json: " << failure.what() << '\n';
  }
}

}  // namespace quenfold::packing
