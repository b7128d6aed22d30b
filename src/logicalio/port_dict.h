#pragma once

#include <cjson/cJSON.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "json/label_files.h"
#include "logicalio/format.h"
#include "logicalio/port_key.h"
#include "logicalio/ref_map.h"

namespace quenfold {

/// By `PortField`.
using FieldWidths = std::array<std::int32_t, kPortFieldCount>;

/// Turns port keys into numbers and back: the four texts of a key go through dictionaries, and the
/// six numbers are laid side by side in fields that are just wide enough. While building, register
/// every key, then compute the widths, then pack.
struct PortDict {
  std::uint32_t version = kPortDictVersion;  // as loaded; always written as 2
  std::uint32_t maxCh = 0;                   // largest channel registered
  std::uint32_t maxPortId = 0;               // largest port id registered

  // By `PortField`. A width from a file is kept as it comes; below 1 its field takes no part.
  FieldWidths bits{};
  std::array<std::uint32_t, kPortFieldCount> shift{};  // position of the lowest bit
  std::array<std::uint32_t, kPortFieldCount> mask{};   // shifted into place, 32 bits of it

  VelDB::RefMap device;
  VelDB::RefMap slot;
  VelDB::RefMap port_prefix;
  VelDB::RefMap type;

  // Of a file that lists no slots: "slotN" has the id N for every N below this.
  std::uint64_t impliedSlots = 0;

  /// Notes the key's texts and numbers and gives its fields as numbers. Nothing, and nothing
  /// changed, for a text that is no port key.
  std::optional<PortKeyIds> registerPort(std::string_view portKey);

  /// The same with the ID key as a text, which `out` is set to. Returns `out`. Defined for other
  /// programs: no conversion calls it.
  std::string& registerPortKey(std::string_view portKey, std::string& out);

  /// The widths that hold everything registered, then `computeShifts`. Returns the total width.
  std::uint32_t computeWidths();

  /// Shifts and masks from the widths. Returns the total width, which may exceed 32.
  std::uint32_t computeShifts();

  /// The packed number of a port, below 2^32; bits beyond that are lost.
  [[nodiscard]] std::uint64_t packIds(const PortKeyIds& ids) const;

  /// The same of an ID key. Defined for other programs: no conversion calls it.
  [[nodiscard]] std::uint64_t packIdKey(std::string_view idKey) const;

  /// The reverse of `packIds`, as far as the fields hold what was packed.
  [[nodiscard]] PortKeyIds unpackIds(std::uint64_t value) const;

  /// The port key of a packed number. An id without a name leaves its text empty.
  [[nodiscard]] std::string unpackToPortKey(std::uint64_t value) const;

  /// As `VelDB::RefMap::rename` on the devices.
  int renameDevice(std::string_view from, std::string_view to) { return device.rename(from, to); }

  /// For `buildCJson`: the "portDict" object. Throws std::bad_alloc.
  [[nodiscard]] cJSON* toJson() const;

  /// Loads a "portDict" object. EINVAL, and nothing changed, without "version" or "refMaps".
  /// Without a "bitPacking" string only the version is loaded.
  std::error_code fromJson(const cJSON& root);

  /// For `buildCJson`: [["ch", width], ...] by `PortField`. Throws std::bad_alloc. Defined for
  /// other programs: no conversion calls it.
  [[nodiscard]] cJSON* widthsToJson() const;
};

/// In the dictionary, renames the devices in list order from label to id or from id to label. A
/// device not in the dictionary, and one whose new name is taken there, is left alone.
void nameDevicesById(const std::vector<DeviceLabel>& devices, PortDict& dict);
void nameDevicesByLabel(const std::vector<DeviceLabel>& devices, PortDict& dict);

/// The bit-packing string of a file: the fields of a port key with their widths.
std::string writeWidths(const FieldWidths& widths);

/// Sets the widths of the fields that the string names, wherever they stand in it. False, and
/// nothing changed, when `parseBitPacking` finds no token in it.
bool parseWidths(std::string_view bitPacking, FieldWidths& widths);

}  // namespace quenfold
