#include "matrices/reader.h"

#include <deque>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "app/error.h"
#include "app/stage_timer.h"
#include "json/access.h"
#include "matrices/legacy_format.h"
#include "matrices/legacy_matrices.h"

namespace quenfold::packing {
namespace {

/// The first of a name, or null where none was found.
const JsonValue* memberOrNull(const JsonValue& member) {
  return member.IsNull() ? nullptr : &member;
}

std::string_view textOf(const JsonValue& member, const char* name) {
  return jsonMemberText(memberOrNull(member), name);
}

/// The way to the matrices. Kept on purpose: the root's message says array.
void checkFrame(const LegacyMatrices& file) {
  if (!file.root.IsObject()) {
    throw runtimeError("matrices.json root object is not array.");
  }
  if (file.config.IsNull()) {
    throw runtimeError("matrices.json Config not found.");
  }
  if (!file.config.IsObject()) {
    throw runtimeError("matrices.json Config is not object.");
  }
  if (file.matrices.IsNull()) {
    throw runtimeError("matrices.json Config.Matrices not found.");
  }
  if (!file.matrices.IsArray()) {
    throw runtimeError("matrices.json Config.Matrices is not array.");
  }
}

void checkPorts(const LegacyMatrix& matrix) {
  if (matrix.ports.IsNull()) {
    throw runtimeError("matrices.json matrix ports not found.");
  }
  if (!matrix.ports.IsArray()) {
    throw runtimeError("matrices.json matrix ports is not array.");
  }
}

void addDeviceLabel(MatricesModel& model, std::string_view matrixName, std::string_view serial) {
  if (matrixName.empty() || serial.empty()) {
    return;
  }
  const std::string_view label = matrixName.substr(0, matrixName.find('.'));
  if (!label.empty() && model.deviceLabels.find(label) == nullptr) {
    model.deviceLabels.append({label, serial});
  }
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
  model.portLabels.push_back({device->serial, port.substr(dot), label});
}

void readPort(const LegacyPort& entry, MatricesModel& model, PortCursor& cursor) {
  const std::string_view port = textOf(entry.port, kPortName);
  const std::string_view label = textOf(entry.label, kPortLabel);
  if (isAlias(label, port)) {
    addPortLabel(model, port, label);
  }
  addPort(model.devices, cursor, port);
}

/// The matrix's ports are the first of `ports`; each is let go once it is in the model.
void readPorts(const LegacyMatrix& matrix, std::deque<LegacyPort>& ports, MatricesModel& model) {
  PortCursor cursor;
  for (std::size_t left = matrix.portCount; left > 0; --left) {
    readPort(ports.front(), model, cursor);
    ports.pop_front();
  }
  if (matrix.portsEndEarly) {
    throw runtimeError("matrices.json matrix ports entry is not object.");
  }
}

void readMatrix(const LegacyMatrix& matrix, MatricesModel& model) {
  if (!matrix.isObject) {
    throw runtimeError("jsonGetString passed non-object");
  }
  const std::string_view name = textOf(matrix.name, kMatrixName);
  addDeviceLabel(model, name, textOf(matrix.serial, kMatrixSerial));
  const std::int32_t id = jsonMemberInt(memberOrNull(matrix.id), kMatrixId);
  const std::int32_t type = matrix.type.IsNumber() ? jsonToInt32(matrix.type) : 0;
  model.details.push_back({name, id, type});
  checkPorts(matrix);
}

void readText(MatricesModel& model) {
  TimePoint stageStart = now();
  LegacyMatrices file = parseLegacyMatrices(model.text);
  logElapsed(stageStart, "decoding matrices.json");
  checkFrame(file);
  for (const LegacyMatrix& matrix : file.list) {
    readMatrix(matrix, model);
    readPorts(matrix, file.ports, model);
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
  model.text = std::move(inputText);
  try {
    readText(model);
  } catch (const std::runtime_error& failure) {
    std::cerr << "Error decoding matrices.json: " << failure.what() << '\n';
  }
}

}  // namespace quenfold::packing
