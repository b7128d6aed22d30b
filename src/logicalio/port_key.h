#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quenfold {

/// A port key such as "devA.slot0.in[12].mic.ch3" in its fields. Texts are parts of what they were
/// scanned from and live as long as it does.
struct PortKeyText {
  std::string_view device;
  std::string_view slot;
  std::string_view port_prefix;
  std::int32_t port_id = 0;
  std::string_view type;
  std::int32_t ch = 0;
};

/// The same as numbers, the texts replaced by their ids. Its text, the ID key, is hexadecimal:
/// "0.0.0[C].0.3".
struct PortKeyIds {
  std::uint32_t device = 0;
  std::uint32_t slot = 0;
  std::uint32_t port_prefix = 0;
  std::uint32_t port_id = 0;
  std::uint32_t type = 0;
  std::uint32_t ch = 0;
};

/// The fields in the order of their bits in a packed port: the first is the lowest.
enum PortField : std::size_t { kCh, kType, kPortId, kPortPrefix, kSlot, kDevice };

inline constexpr std::size_t kPortFieldCount = 6;

/// By `PortField`.
inline constexpr std::array<std::uint32_t PortKeyIds::*, kPortFieldCount> kPortKeyIds = {
    &PortKeyIds::ch,          &PortKeyIds::type, &PortKeyIds::port_id,
    &PortKeyIds::port_prefix, &PortKeyIds::slot, &PortKeyIds::device};

/// Reads a key as sscanf does by "%[^.].%[^.].%[^[][%d].%[^.].ch%d" where int and long have 32
/// bits: a number may have blanks before it and a sign, is limited to the type's range, and text
/// after the last one is ignored. Nothing when the key does not scan; a key of more than 191
/// bytes, a device, slot or prefix of more than 63 and a type of more than 15 do not.
std::optional<PortKeyText> scanPortKey(std::string_view key);

std::string printPortKey(const PortKeyText& fields);

// ID keys are defined for other programs: conversions keep the numbers themselves.

/// Reads an ID key as sscanf does by "%X.%X.%X[%X].%X.%X" on such a host. The fields from the
/// first one on that does not scan are 0, and all are when the key has more than 63 bytes.
PortKeyIds scanIdKey(std::string_view key);

std::string printIdKey(const PortKeyIds& ids);

}  // namespace quenfold
