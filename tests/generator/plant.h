#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "generator/random.h"

namespace quenfold::generator {

/// One port and channel of a matrix. The names are indices, so that millions of entries stay small.
struct PortEntry {
  std::uint32_t device = 0;  // of Plant::devices
  std::uint32_t label = 0;   // of Plant::labels; 0 is no label of the user's
  std::int32_t number = 0;
  std::uint32_t slot = 0;     // the number in the slot's name
  std::uint16_t prefix = 0;   // of kPortPrefixes
  std::uint16_t type = 0;     // of kPortTypes
  std::uint32_t channel = 0;  // 0 and above
};

/// A device's label, without ".", and its serial number, both unique.
struct Device {
  std::string label;
  std::string serial;
};

struct Matrix {
  std::string name;
  std::string serial;
  std::int32_t id = 0;
  std::optional<std::int32_t> type;
  std::vector<PortEntry> ports;
};

struct Plant {
  std::vector<Device> devices;
  std::vector<std::string> labels{""};
  std::vector<Matrix> matrices;
  bool messy = false;
};

struct PlantParameters {
  std::uint32_t ports = 1000;  // port entries in all, at least 1
  std::uint32_t devices = 0;   // 0: as many as the size asks for
  std::uint32_t slots = 0;     // a device; 0: as many as the size asks for
  bool messy = false;
};

/// A plant with exactly `ports` port entries. Unless messy it is canonical: packing its matrices
/// and unpacking them again gives the same text. Throws std::invalid_argument when the ports are
/// fewer than the slots.
Plant buildPlant(const PlantParameters& parameters, Random& random);

/// Appends "device.slot.port.type.chN".
void appendPortKey(std::string& out, const Plant& plant, const PortEntry& entry);

}  // namespace quenfold::generator
