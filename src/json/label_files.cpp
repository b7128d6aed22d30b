#include "json/label_files.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "app/error.h"
#include "app/files.h"
#include "app/limits.h"
#include "app/stage_timer.h"
#include "json/access.h"
#include "json/format.h"

namespace quenfold {
namespace {

/// The value of the root's member "portLabels".
const JsonValue& labelEntriesOf(const JsonDocument& root) {
  if (!root.IsObject()) {
    throw runtimeError("loadPortLabels root is not object");
  }
  const JsonValue* const entries = findMember(root, kPortLabelsSection);
  if (entries == nullptr) {
    throw runtimeError("{} not found", kPortLabelsSection);
  }
  if (!entries->IsObject()) {
    throw runtimeError("{} is not object", kPortLabelsSection);
  }
  return *entries;
}

/// Puts another device in front of port keys. A long replacement is copied into each of its
/// device's keys: the budget counts that.
class KeyMapper {
 public:
  KeyMapper(PortLabelMap& keeper, const DeviceMapper& mapper) : keeper_(keeper), mapper_(mapper) {}

  std::string_view map(std::string_view key) {
    const std::size_t dot = key.find('.');
    if (mapper_ && dot != std::string_view::npos) {
      const std::string_view mapped = mapper_(key.substr(0, dot));
      if (!mapped.empty()) {
        replaced_.take(mapped.size());
        return keeper_.keepJoined(mapped, key.substr(dot));
      }
    }
    return key;
  }

 private:
  PortLabelMap& keeper_;
  const DeviceMapper& mapper_;
  Budget replaced_{"too many bytes of port label keys", kMaxReplacedBytes};
};

}  // namespace

std::string& PortLabelMap::keep(std::string text) {
  contents_->text = std::move(text);
  return contents_->text;
}

std::string_view PortLabelMap::keepJoined(std::string_view front, std::string_view back) {
  const std::size_t size = front.size() + back.size();
  auto* const joined = static_cast<char*>(contents_->joined.allocate(size, 1));
  std::copy(back.begin(), back.end(), std::copy(front.begin(), front.end(), joined));
  return {joined, size};
}

DeviceIndex indexById(const std::vector<DeviceLabel>& devices) {
  DeviceIndex index;
  for (const DeviceLabel& device : devices) {
    index.emplace(device.id, &device);
  }
  return index;
}

DeviceMapper labelOfDevice(const std::vector<DeviceLabel>& devices) {
  return [byId = indexById(devices)](std::string_view id) -> std::string_view {
    const auto known = byId.find(id);
    return known == byId.end() ? id : known->second->label;
  };
}

std::vector<DeviceLabel> parseDeviceLabels(const std::string& path) {
  return deviceLabelsOf(readFile(path));
}

std::vector<DeviceLabel> deviceLabelsOf(std::string text) {
  TimePoint stageStart = now();
  const JsonDocument root = parseJson(text);
  if (!root.IsObject()) {
    throw runtimeError("parseDeviceLabels root is not object");
  }
  const JsonValue* const entries = findMember(root, kDeviceLabelsSection);
  if (entries == nullptr) {
    throw runtimeError("{} not found", kDeviceLabelsSection);
  }
  if (!entries->IsArray()) {
    throw runtimeError("{} is not array", kDeviceLabelsSection);
  }
  std::vector<DeviceLabel> labels;
  labels.reserve(entries->Size());
  for (const JsonValue& entry : entries->GetArray()) {
    std::string id = jsonGetString(entry, kDeviceLabelId);
    std::string label = jsonGetString(entry, kDeviceLabelText);
    labels.push_back({std::move(id), std::move(label), jsonGetString(entry, kDeviceLabelSerial)});
  }
  logElapsed(stageStart, "    Loaded device labels");
  return labels;
}

PortLabelMap loadPortLabels(const std::string& path, bool reverse, const DeviceMapper& mapper) {
  return portLabelsOf(readFile(path), reverse, mapper);
}

PortLabelMap portLabelsOf(std::string text, bool reverse, const DeviceMapper& mapper) {
  PortLabelMap labels;
  TimePoint stageStart = now();
  const JsonDocument root = parseJson(labels.keep(std::move(text)));
  KeyMapper mapped(labels, mapper);
  for (const auto& [name, value] : labelEntriesOf(root).GetObject()) {
    if (!value.IsString()) {
      throw runtimeError("portLabel entry value is not string");
    }
    const std::string_view key = mapped.map(jsonText(name));
    const std::string_view label = jsonText(value);
    labels.assign(reverse ? label : key, reverse ? key : label);
  }
  logElapsed(stageStart, "    Loaded port labels");
  return labels;
}

}  // namespace quenfold
