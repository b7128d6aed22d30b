#include "json/label_files.h"

#include <utility>

#include "app/error.h"
#include "app/files.h"
#include "app/limits.h"
#include "app/stage_timer.h"
#include "json/access.h"
#include "json/document.h"
#include "json/sections.h"

namespace quenfold {
namespace {

/// The one member of a label file's root. `loader` names the caller in the message.
const JsonValue& sectionOf(const JsonDocument& root, const char* section, std::string_view loader) {
  if (!root.IsObject()) {
    throw runtimeError("{} root is not object", loader);
  }
  const JsonValue* const content = findMember(root, section);
  if (content == nullptr) {
    throw runtimeError("{} not found", section);
  }
  return *content;
}

/// A device's long replacement is copied into each of its keys: `replaced` counts that.
std::string mappedKey(std::string_view key, const DeviceMapper& mapper, Budget& replaced) {
  const std::size_t dot = key.find('.');
  if (mapper && dot != std::string_view::npos) {
    std::string mapped = mapper(key.substr(0, dot));
    if (!mapped.empty()) {
      replaced.take(mapped.size());
      return mapped.append(key.substr(dot));
    }
  }
  return std::string(key);
}

}  // namespace

std::vector<DeviceLabel> parseDeviceLabels(const std::string& path) {
  std::string text = readFile(path);
  TimePoint stageStart = now();
  const JsonDocument root = parseJson(text);
  const JsonValue& entries = sectionOf(root, kDeviceLabelsSection, "parseDeviceLabels");
  if (!entries.IsArray()) {
    throw runtimeError("{} is not array", kDeviceLabelsSection);
  }
  std::vector<DeviceLabel> labels;
  labels.reserve(entries.Size());
  for (const JsonValue& entry : entries.GetArray()) {
    std::string id = jsonGetString(entry, kDeviceLabelId);
    std::string label = jsonGetString(entry, kDeviceLabelText);
    labels.push_back({std::move(id), std::move(label), jsonGetString(entry, kDeviceLabelSerial)});
  }
  logElapsed(stageStart, "    Loaded device labels");
  return labels;
}

PortLabelMap loadPortLabels(const std::string& path, bool reverse, const DeviceMapper& mapper) {
  std::string text = readFile(path);
  TimePoint stageStart = now();
  const JsonDocument root = parseJson(text);
  const JsonValue& entries = sectionOf(root, kPortLabelsSection, "loadPortLabels");
  if (!entries.IsObject()) {
    throw runtimeError("{} is not object", kPortLabelsSection);
  }
  PortLabelMap labels;
  Budget replaced("too many bytes of port label keys", kMaxReplacedBytes);
  for (const auto& entry : entries.GetObject()) {
    if (!entry.value.IsString()) {
      throw runtimeError("portLabel entry value is not string");
    }
    std::string key = mappedKey(jsonText(entry.name), mapper, replaced);
    std::string label(jsonText(entry.value));
    if (reverse) {
      key.swap(label);
    }
    labels.insert_or_assign(std::move(key), std::move(label));
  }
  logElapsed(stageStart, "    Loaded port labels");
  return labels;
}

}  // namespace quenfold
