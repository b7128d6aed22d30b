#pragma once

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quenfold {

/// The six fields of a port key, in the order of their bits: the first is the lowest.
enum PortField : std::size_t { kCh, kType, kPortId, kPortPrefix, kSlot, kDevice };

inline constexpr std::size_t kPortFieldCount = 6;

/// A port key such as "devA.slot0.in[12].mic.ch3" in its fields. Scanned texts are parts of the key
/// and live as long as it does.
struct PortKeyText {
  std::string_view device;
  std::string_view slot;
  std::string_view portPrefix;
  std::int32_t portId = 0;
  std::string_view type;
  std::int32_t ch = 0;
};

/// The fields of a port key as numbers, the texts replaced by their ids, by `PortField`. Its text,
/// the ID key, is hexadecimal: "0.0.0[C].0.3".
using PortKeyIds = std::array<std::uint32_t, kPortFieldCount>;

/// Reads a key as sscanf does by "%[^.].%[^.].%[^[][%d].%[^.].ch%d" where int and long have 32
/// bits: a number may have blanks before it and a sign, is limited to the type's range, and text
/// after the last one is ignored. Nothing when the key does not scan; a key of more than 191
/// bytes, a device, slot or prefix of more than 63 and a type of more than 15 do not.
std::optional<PortKeyText> scanPortKey(std::string_view key);

/// Append the two halves of a key, the first up to and including the bracket.
void appendPortKeyHead(fmt::memory_buffer& key, std::string_view device, std::string_view slot,
                       std::string_view portPrefix);
void appendPortKeyTail(fmt::memory_buffer& key, std::int32_t portId, std::string_view type,
                       std::int32_t ch);

/// Reads an ID key as sscanf does by "%X.%X.%X[%X].%X.%X" on such a host. The fields from the
/// first one on that does not scan are 0, and all are when the key has more than 63 bytes.
PortKeyIds scanIdKey(std::string_view key);

std::string printIdKey(const PortKeyIds& ids);

}  // namespace quenfold
