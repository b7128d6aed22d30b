#include "logicalio/port_dict.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstddef>
#include <vector>

#include "json/cjson_access.h"
#include "json/cjson_tree.h"
#include "logicalio/bit_packing.h"
#include "logicalio/format.h"

namespace quenfold {
namespace {

static_assert(kPortFieldNames.size() == kPortFieldCount);

/// Slots named at once when a file lists none; those beyond are named when they are met.
constexpr std::uint64_t kMostListedSlots = 65536;

/// The bits that hold 0 to values - 1, rounded up; none for 0 and for 1.
std::int32_t bitsFor(std::uint32_t values) {
  std::int32_t bits = 0;
  while (std::uint64_t{1} << static_cast<std::uint32_t>(bits) < values) {
    ++bits;
  }
  return bits;
}

std::int32_t bitsFor(const VelDB::RefMap& map) {
  return bitsFor(static_cast<std::uint32_t>(map.size()));
}

std::uint32_t shiftedLeft(std::uint32_t value, std::uint32_t by) {
  return by < 32 ? value << by : 0;
}

void addRefMap(cJSON* refMaps, PortField field, const VelDB::RefMap& map) {
  addMember(refMaps, kPortFieldNames.at(field), map.toJson());
}

void loadRefMap(const cJSON& refMaps, PortField field, VelDB::RefMap& map) {
  const cJSON* const entries = findMember(&refMaps, kPortFieldNames.at(field));
  if (entries != nullptr) {
    map.fromJson(*entries);
  }
}

/// The name of that slot in a file that lists none.
std::string impliedSlotName(std::uint64_t id) { return fmt::format("{}{}", kDefaultSlot, id); }

void nameImpliedSlots(PortDict& dict) {
  const auto width = static_cast<std::uint32_t>(dict.bits[kSlot]);
  dict.impliedSlots = std::uint64_t{lowMask(width)} + 1;
  for (std::uint64_t id = 0; id < std::min(dict.impliedSlots, kMostListedSlots); ++id) {
    dict.slot.add(impliedSlotName(id));
  }
}

std::string_view nameOrEmpty(const VelDB::RefMap& map, std::uint32_t id) {
  const std::string* const name = map.nameOf(id);
  return name == nullptr ? std::string_view() : *name;
}

/// One part of the bit-packing string: a literal (type 0) or a field.
struct BitPackPart {
  char type;
  const char* literal;
  PortField field;
};

constexpr std::array<BitPackPart, 12> kBitPackParts = {{{'$', nullptr, kDevice},
                                                        {0, ".", {}},
                                                        {'$', nullptr, kSlot},
                                                        {0, ".", {}},
                                                        {'$', nullptr, kPortPrefix},
                                                        {0, "[", {}},
                                                        {'#', nullptr, kPortId},
                                                        {0, "]", {}},
                                                        {0, ".", {}},
                                                        {'$', nullptr, kType},
                                                        {0, ".ch", {}},
                                                        {'#', nullptr, kCh}}};

}  // namespace

std::string writeWidths(const FieldWidths& widths) {
  std::vector<BitPackToken> tokens;
  tokens.reserve(kBitPackParts.size());
  for (const BitPackPart& part : kBitPackParts) {
    tokens.push_back(part.type == 0
                         ? makeLiteralToken(part.literal)
                         : makeFieldToken(part.type, kPortFieldNames.at(part.field),
                                          static_cast<std::uint32_t>(widths.at(part.field))));
  }
  return writeBitPacking(tokens);
}

bool parseWidths(std::string_view bitPacking, FieldWidths& widths) {
  const std::vector<BitPackToken> tokens = parseBitPacking(bitPacking);
  for (const BitPackToken& token : tokens) {
    const auto* const name = std::find(kPortFieldNames.begin(), kPortFieldNames.end(), token.text);
    if (token.kind != BitPackKind::kLiteral && name != kPortFieldNames.end()) {
      widths.at(static_cast<std::size_t>(name - kPortFieldNames.begin())) =
          static_cast<std::int32_t>(token.bits);
    }
  }
  return !tokens.empty();
}

std::optional<PortKeyIds> PortDict::registerPort(std::string_view portKey) {
  const std::optional<PortKeyText> key = scanPortKey(portKey);
  if (!key) {
    return std::nullopt;
  }
  PortKeyIds ids;
  ids.device = device.add(key->device);
  ids.port_prefix = port_prefix.add(key->port_prefix);
  ids.type = type.add(key->type);
  ids.slot = slot.add(key->slot);
  // A negative number counts as a very large one.
  ids.ch = static_cast<std::uint32_t>(key->ch);
  ids.port_id = static_cast<std::uint32_t>(key->port_id);
  maxCh = std::max(maxCh, ids.ch);
  maxPortId = std::max(maxPortId, ids.port_id);
  return ids;
}

std::string& PortDict::registerPortKey(std::string_view portKey, std::string& out) {
  const std::optional<PortKeyIds> ids = registerPort(portKey);
  return ids ? out = printIdKey(*ids) : out;
}

std::uint32_t PortDict::computeWidths() {
  // Kept on purpose: with a maximum of 2^32 - 1 the count wraps to 0, which takes no bits.
  bits[kCh] = bitsFor(maxCh + 1);
  bits[kType] = bitsFor(type);
  bits[kPortId] = bitsFor(maxPortId + 1);
  bits[kPortPrefix] = bitsFor(port_prefix);
  bits[kSlot] = bitsFor(slot);
  bits[kDevice] = bitsFor(device);
  return computeShifts();
}

std::uint32_t PortDict::computeShifts() {
  std::uint32_t total = 0;
  for (std::size_t field = 0; field < kPortFieldCount; ++field) {
    const auto width = static_cast<std::uint32_t>(bits.at(field));
    shift.at(field) = total;
    mask.at(field) = shiftedLeft(lowMask(width), total);
    total += width;
  }
  return total;
}

std::uint64_t PortDict::packIds(const PortKeyIds& ids) const {
  std::uint32_t packed = 0;
  for (std::size_t field = 0; field < kPortFieldCount; ++field) {
    if (bits[field] > 0) {
      // Kept on purpose: not masked, so a value wider than its field spills into the next one.
      packed |= shiftedLeft(ids.*kPortKeyIds[field], shift[field]);
    }
  }
  return packed;
}

std::uint64_t PortDict::packIdKey(std::string_view idKey) const {
  return packIds(scanIdKey(idKey));
}

PortKeyIds PortDict::unpackIds(std::uint64_t value) const {
  PortKeyIds ids;
  for (std::size_t field = 0; field < kPortFieldCount; ++field) {
    if (bits[field] > 0 && shift[field] < 32) {
      // Kept on purpose: a field that reaches bit 31 takes in the upper half of the number too.
      const std::int64_t wideMask = static_cast<std::int32_t>(mask[field]);
      ids.*kPortKeyIds[field] = static_cast<std::uint32_t>(
          (value & static_cast<std::uint64_t>(wideMask)) >> shift[field]);
    }
  }
  return ids;
}

std::string PortDict::unpackToPortKey(std::uint64_t value) const {
  const PortKeyIds ids = unpackIds(value);
  const std::string unlistedSlot = slot.containsId(ids.slot) || ids.slot >= impliedSlots
                                       ? std::string()
                                       : impliedSlotName(ids.slot);
  PortKeyText key;
  key.device = nameOrEmpty(device, ids.device);
  key.slot = unlistedSlot.empty() ? nameOrEmpty(slot, ids.slot) : unlistedSlot;
  key.port_prefix = nameOrEmpty(port_prefix, ids.port_prefix);
  key.port_id = static_cast<std::int32_t>(ids.port_id);
  key.type = nameOrEmpty(type, ids.type);
  key.ch = static_cast<std::int32_t>(ids.ch);
  return printPortKey(key);
}

cJSON* PortDict::toJson() const {
  cJSON* const root = newObject();
  addMember(root, kVersionKey, newNumber(kPortDictVersion));
  cJSON* const refMaps = addMember(root, kRefMapsKey, newObject());
  addRefMap(refMaps, kDevice, device);
  addRefMap(refMaps, kSlot, slot);
  addRefMap(refMaps, kPortPrefix, port_prefix);
  addRefMap(refMaps, kType, type);
  addMember(root, kBitPackingKey, newString(writeWidths(bits).c_str()));
  return root;
}

std::error_code PortDict::fromJson(const cJSON& root) {
  const cJSON* const versionItem = findMember(&root, kVersionKey);
  const cJSON* const refMaps = findMember(&root, kRefMapsKey);
  if (versionItem == nullptr || refMaps == nullptr) {
    return std::make_error_code(std::errc::invalid_argument);
  }
  version = static_cast<std::uint32_t>(versionItem->valueint);
  const char* const bitPacking = stringValue(findMember(&root, kBitPackingKey));
  if (bitPacking == nullptr) {
    return {};
  }
  if (parseWidths(bitPacking, bits)) {
    computeShifts();
  }
  loadRefMap(*refMaps, kDevice, device);
  loadRefMap(*refMaps, kSlot, slot);
  impliedSlots = 0;
  if (slot.size() == 0) {
    nameImpliedSlots(*this);
  }
  loadRefMap(*refMaps, kPortPrefix, port_prefix);
  loadRefMap(*refMaps, kType, type);
  return {};
}

cJSON* PortDict::widthsToJson() const {
  cJSON* const array = newArray();
  for (std::size_t field = 0; field < kPortFieldCount; ++field) {
    cJSON* const pair = addElement(array, newArray());
    addElement(pair, newString(kPortFieldNames.at(field)));
    addElement(pair, newNumber(bits.at(field)));
  }
  return array;
}

void nameDevicesById(const std::vector<DeviceLabel>& devices, PortDict& dict) {
  for (const DeviceLabel& device : devices) {
    dict.renameDevice(device.label, device.id);
  }
}

void nameDevicesByLabel(const std::vector<DeviceLabel>& devices, PortDict& dict) {
  for (const DeviceLabel& device : devices) {
    dict.renameDevice(device.id, device.label);
  }
}

}  // namespace quenfold
