#include "json/label_files.h"

#include <algorithm>
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
std::string_view mappedKey(std::string_view key, const DeviceMapper& mapper, Budget& replaced,
                           PortLabelMap& labels) {
  const std::size_t dot = key.find('.');
  if (mapper && dot != std::string_view::npos) {
    const std::string mapped = mapper(key.substr(0, dot));
    if (!mapped.empty()) {
      replaced.take(mapped.size());
      return labels.keepJoined(mapped, key.substr(dot));
    }
  }
  return key;
}

}  // namespace

std::string& PortLabelMap::keep(std::string text) {
  contents_->text = std::move(text);
  return contents_->text;
}

std::string_view PortLabelMap::keepJoined(std::string_view front, std::string_view back) {
  const std::size_t size = front.size() + back.size();
  auto* const joined = static_cast<char*>(contents_->memory.allocate(size, 1));
  std::copy(back.begin(), back.end(), std::copy(front.begin(), front.end(), joined));
  return {joined, size};
}

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
  PortLabelMap labels;
  std::string& text = labels.keep(readFile(path));
  TimePoint stageStart = now();
  const JsonDocument root = parseJson(text);
  const JsonValue& entries = sectionOf(root, kPortLabelsSection, "loadPortLabels");
  if (!entries.IsObject()) {
    throw runtimeError("{} is not object", kPortLabelsSection);
  }
  labels.reserve(entries.MemberCount());
  Budget replaced("too many bytes of port label keys", kMaxReplacedBytes);
  for (const auto& entry : entries.GetObject()) {
    if (!entry.value.IsString()) {
      throw runtimeError("portLabel entry value is not string");
    }
    const std::string_view key = mappedKey(jsonText(entry.name), mapper, replaced, labels);
    const std::string_view label = jsonText(entry.value);
    labels.assign(reverse ? label : key, reverse ? key : label);
  }
  logElapsed(stageStart, "    Loaded port labels");
  return labels;
}

}  // namespace quenfold
