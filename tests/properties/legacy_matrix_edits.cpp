#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

#include "properties/legacy_edits.h"
#include "properties/pick.h"

namespace quenfold::properties {
namespace {

using generator::Random;
using Told = std::vector<ToldDifference>;

std::vector<PlainJson>& matricesIn(LegacyFiles& database) {
  return database.files.at(kMatrices).find("Config")->find("Matrices")->elements;
}

/// One port entry of a matrix; none in a database without ports.
struct PickedPort {
  std::vector<PlainJson>* ports;
  std::size_t place;

  [[nodiscard]] PlainJson& entry() const { return ports->at(place); }
  [[nodiscard]] std::string& name() const { return entry().find("port")->text; }
};

std::optional<PickedPort> pickPort(LegacyFiles& database, Random& random) {
  std::vector<PickedPort> ports;
  for (PlainJson& matrix : matricesIn(database)) {
    std::vector<PlainJson>& entries = matrix.find("ports")->elements;
    for (std::size_t place = 0; place < entries.size(); ++place) {
      ports.push_back({&entries, place});
    }
  }
  return ports.empty() ? std::nullopt : std::optional(ports[pickPlace(ports, random)]);
}

Told editLabel(LegacyFiles& database, Random& random) {
  const std::optional<PickedPort> port = pickPort(database, random);
  if (!port) {
    return {};
  }
  std::string& label = port->entry().find("label")->text;
  const std::string before = label == port->name() ? "" : label;
  label = "Edited";
  return {{"port-label-changed", kMatrices, port->name(), before, label}};
}

Told removePort(LegacyFiles& database, Random& random) {
  const std::optional<PickedPort> port = pickPort(database, random);
  if (!port) {
    return {};
  }
  Told told = {{"port-removed", kMatrices, port->name(), "", ""}};
  port->ports->erase(port->ports->begin() + static_cast<std::ptrdiff_t>(port->place));
  return told;
}

/// It keeps its label.
Told renamePort(LegacyFiles& database, Random& random) {
  const std::optional<PickedPort> port = pickPort(database, random);
  if (!port) {
    return {};
  }
  const std::string before = port->name();
  PlainJson& label = *port->entry().find("label");
  port->name() = before + "77";
  label.text = label.text == before ? port->name() : label.text;
  return {{"port-removed", kMatrices, before, "", ""},
          {"port-added", kMatrices, port->name(), "", ""}};
}

Told editSerial(LegacyFiles& database, Random& random) {
  std::vector<PlainJson>& matrices = matricesIn(database);
  if (matrices.empty()) {
    return {};
  }
  PlainJson& matrix = matrices[pickPlace(matrices, random)];
  const std::string before = std::exchange(matrix.find("serialnumber")->text, "Edited");
  return {{"matrix-serial-changed", kMatrices, matrix.find("name")->text, before, "Edited"}};
}

Told renameMatrix(LegacyFiles& database, Random& random) {
  std::vector<PlainJson>& matrices = matricesIn(database);
  if (matrices.empty()) {
    return {};
  }
  std::string& name = matrices[pickPlace(matrices, random)].find("name")->text;
  const std::string before = std::exchange(name, name + ".edited");
  return {{"matrix-removed", kMatrices, before, "", ""}, {"matrix-added", kMatrices, name, "", ""}};
}

Told movePort(LegacyFiles& database, Random& random) {
  const std::optional<PickedPort> port = pickPort(database, random);
  std::vector<PlainJson>& matrices = matricesIn(database);
  if (!port || matrices.size() < 2) {
    return {};
  }
  const bool fromFirst = port->ports == &matrices.front().find("ports")->elements;
  PlainJson& target = fromFirst ? matrices.back() : matrices.front();
  const auto source = std::find_if(matrices.begin(), matrices.end(), [&](PlainJson& matrix) {
    return &matrix.find("ports")->elements == port->ports;
  });
  Told told = {{"port-matrix-changed", kMatrices, port->name(), source->find("name")->text,
                target.find("name")->text}};
  target.find("ports")->elements.push_back(port->entry());
  port->ports->erase(port->ports->begin() + static_cast<std::ptrdiff_t>(port->place));
  return told;
}

/// The matrices of one device that has a serial number; none in a database without.
struct PickedDevice {
  std::string label;
  std::vector<PlainJson*> matrices;

  [[nodiscard]] std::string serial() const { return matrices.front()->find("serialnumber")->text; }
};

std::optional<PickedDevice> pickDevice(LegacyFiles& database, Random& random) {
  std::map<std::string, PickedDevice> devices;
  for (PlainJson& matrix : matricesIn(database)) {
    const std::string& name = matrix.find("name")->text;
    const std::string label = name.substr(0, name.find('.'));
    if (!label.empty() && !matrix.find("serialnumber")->text.empty()) {
      devices[label].label = label;
      devices[label].matrices.push_back(&matrix);
    }
  }
  if (devices.empty()) {
    return std::nullopt;
  }
  return std::next(devices.begin(), static_cast<std::ptrdiff_t>(pickPlace(devices, random)))
      ->second;
}

Told editDeviceSerial(LegacyFiles& database, Random& random) {
  const std::optional<PickedDevice> device = pickDevice(database, random);
  if (!device) {
    return {};
  }
  Told told = {{"device-serial-changed", kMatrices, device->label, device->serial(), "Edited"}};
  for (PlainJson* const matrix : device->matrices) {
    matrix->find("serialnumber")->text = "Edited";
  }
  return told;
}

Told renameDevice(LegacyFiles& database, Random& random) {
  const std::optional<PickedDevice> device = pickDevice(database, random);
  if (!device) {
    return {};
  }
  for (PlainJson* const matrix : device->matrices) {
    matrix->find("name")->text.replace(0, device->label.size(), "Edited");
  }
  return {{"device-removed", kMatrices, device->label, "", ""},
          {"device-added", kMatrices, "Edited", "", ""}};
}

}  // namespace

std::vector<LegacyEdit> matrixEdits() {
  return {
      {"the label of a port", false, editLabel},
      {"a port removed", false, removePort},
      {"a port renamed", false, renamePort},
      {"the serial number of a matrix", false, editSerial},
      {"the name of a matrix", false, renameMatrix},
      {"a port in another matrix", false, movePort},
      {"the serial number of a device", false, editDeviceSerial},
      {"the label of a device", false, renameDevice},
  };
}

}  // namespace quenfold::properties
