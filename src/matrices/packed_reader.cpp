#include "matrices/packed_reader.h"

#include <algorithm>
#include <utility>

#include "app/error.h"
#include "json/access.h"

namespace quenfold::unpacking {
namespace {

Range loadRange(const JsonValue& value) {
  if (!value.IsArray()) {
    throw runtimeError("Range value is not array");
  }
  if (value.Size() != 1 && value.Size() != 2) {
    // Kept on purpose: "ir".
    throw runtimeError("Range must have 1 ir 2 entries");
  }
  if (!value[0].IsNumber()) {
    throw runtimeError("Range[0] is not number");
  }
  const std::int32_t first = jsonToInt32(value[0]);
  if (value.Size() == 1) {
    return {first, first};
  }
  if (!value[1].IsNumber()) {
    throw runtimeError("Range[1] is not number");
  }
  return {first, jsonToInt32(value[1])};
}

std::pair<std::string, Range> loadStringRangePair(const JsonValue& value) {
  if (!value.IsArray()) {
    throw runtimeError("StringRangePair parse error, value is not array");
  }
  if (value.Size() != 2) {
    throw runtimeError("StringRangePair error, port field must have 2 entries");
  }
  if (!value[0].IsString()) {
    throw runtimeError("StringRangePair error, first entry is not string");
  }
  return {std::string(jsonText(value[0])), loadRange(value[1])};
}

/// "in[]" becomes "in[{}]"; a name without "[" stays as it is.
std::string patternOf(std::string_view portName) {
  std::string pattern(portName);
  const std::size_t open = pattern.find('[');
  if (open != std::string::npos) {
    pattern.insert(open + 1, "{}");
  }
  return pattern;
}

Direction directionOf(std::string_view text) {
  const auto* const found = std::find(kDirectionTexts.begin(), kDirectionTexts.end(), text);
  return found == kDirectionTexts.end() ? Direction::kUnknown
                                        : static_cast<Direction>(found - kDirectionTexts.begin());
}

void loadPort(const JsonValue& value, PortTypeGroup& group) {
  if (!value.IsArray()) {
    // Kept on purpose: the wording of another element.
    throw runtimeError("StringRangePair parse error, value is not array");
  }
  if (value.Size() != 3) {
    throw runtimeError("Port parsing error, port field must have 3 entries");
  }
  if (!value[0].IsString()) {
    throw runtimeError("Port error, 1st entry is not string");
  }
  const Range ports = loadRange(value[1]);
  if (!value[2].IsString()) {
    throw runtimeError("Port error, 3rd entry is not string");
  }
  group.port = patternOf(jsonText(value[0]));
  group.first = ports.first;
  group.last = ports.last;
  group.direction = directionOf(jsonText(value[2]));
}

PortTypeGroup loadGroup(const JsonValue& value) {
  if (!value.IsObject()) {
    throw runtimeError("Loaded Port Tree PortTypeGroup is not object");
  }
  const JsonValue* const port = findMember(value, kGroupPort);
  if (port == nullptr) {
    throw runtimeError("PortTypeGroup parse error, port not found");
  }
  PortTypeGroup group;
  loadPort(*port, group);
  const JsonValue* const types = findMember(value, kGroupTypes);
  if (types == nullptr) {
    throw runtimeError("PortTypeGroup parse error, types not found");
  }
  if (!types->IsArray()) {
    throw runtimeError("PortTypeGroup parse error, types is not array");
  }
  for (const JsonValue& type : types->GetArray()) {
    auto [name, channels] = loadStringRangePair(type);
    group.types.insert_or_assign(std::move(name), channels);
  }
  return group;
}

std::vector<PortTypeGroup> loadSlot(const JsonValue& value) {
  if (!value.IsArray()) {
    throw runtimeError("Loaded Port Tree Slot is not array");
  }
  std::vector<PortTypeGroup> groups;
  groups.reserve(value.Size());
  for (const JsonValue& group : value.GetArray()) {
    groups.push_back(loadGroup(group));
  }
  return groups;
}

/// Every member is loaded, so that its errors are raised, before the first of a name is kept.
SlotMap loadDevice(const JsonValue& value) {
  if (!value.IsObject()) {
    throw runtimeError("Loaded Port Tree device is not object");
  }
  SlotMap slots;
  for (const auto& member : value.GetObject()) {
    slots.emplace(jsonText(member.name), loadSlot(member.value));
  }
  return slots;
}

}  // namespace

PortTree loadPortTree(const JsonValue& root) {
  if (!root.IsObject()) {
    throw runtimeError("Loaded Port Tree root is not object");
  }
  PortTree tree;
  for (const auto& member : root.GetObject()) {
    tree.emplace(jsonText(member.name), loadDevice(member.value));
  }
  return tree;
}

}  // namespace quenfold::unpacking
