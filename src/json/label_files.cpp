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
#include "json/document.h"
#include "json/sections.h"

namespace quenfold {
namespace {

/// Takes the parser's events and keeps the members of the root's "portLabels", the first one of
/// that name. Levels count the objects and arrays around an event.
class PortLabelsHandler : public rapidjson::BaseReaderHandler<JsonEncoding, PortLabelsHandler> {
 public:
  /// A port key and its label as they stand in the text; null data for what is no string.
  using Entry = std::pair<std::string_view, std::string_view>;

  void parseFrom(char** /*place*/) {}

  // NOLINTBEGIN(readability-identifier-naming): the names are the library's
  bool Default() { return value(kOther); }
  bool RawNumber(const char* /*digits*/, rapidjson::SizeType /*length*/, bool /*copy*/) {
    return value(kOther);
  }
  bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
    return value(kOther, {text, length});
  }
  bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
    key_ = {text, length};
    return true;
  }
  bool StartObject() { return start(kObject); }
  bool EndObject(rapidjson::SizeType /*members*/) { return end(); }
  bool StartArray() { return start(kOther); }
  bool EndArray(rapidjson::SizeType /*elements*/) { return end(); }
  // NOLINTEND(readability-identifier-naming)

  /// Of the whole file, once it has been parsed. Throws what `loadPortLabels` says of its shape.
  [[nodiscard]] const std::vector<Entry>& entries(bool isJson) const {
    if (!isJson || root_ != kObject) {
      throw runtimeError("loadPortLabels root is not object");
    }
    if (section_ == kMissing) {
      throw runtimeError("{} not found", kPortLabelsSection);
    }
    if (section_ != kObject) {
      throw runtimeError("{} is not object", kPortLabelsSection);
    }
    return entries_;
  }

 private:
  enum Shape { kMissing, kObject, kOther };

  bool value(Shape shape, std::string_view text = {}) {
    if (inSection_ && level_ == 2) {
      entries_.emplace_back(key_, text);
    } else if (level_ == 0) {
      root_ = shape;
    } else if (level_ == 1 && root_ == kObject && section_ == kMissing &&
               key_ == kPortLabelsSection) {
      section_ = shape;
      inSection_ = shape == kObject;
    }
    return true;
  }

  bool start(Shape shape) {
    value(shape);
    ++level_;
    return true;
  }

  bool end() {
    --level_;
    inSection_ = inSection_ && level_ > 1;
    return true;
  }

  std::size_t level_ = 0;
  Shape root_ = kMissing;
  Shape section_ = kMissing;
  bool inSection_ = false;
  std::string_view key_;  // of the value that comes next
  std::vector<Entry> entries_;
};

/// A device's long replacement is copied into each of its keys: `replaced` counts that.
std::string_view mappedKey(std::string_view key, const DeviceMapper& mapper, Budget& replaced,
                           PortLabelMap& labels) {
  const std::size_t dot = key.find('.');
  if (mapper && dot != std::string_view::npos) {
    const std::string_view mapped = mapper(key.substr(0, dot));
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
  PortLabelMap labels;
  std::string& text = labels.keep(readFile(path));
  TimePoint stageStart = now();
  PortLabelsHandler handler;
  const bool isJson = parseJsonEvents(text, handler);
  const std::vector<PortLabelsHandler::Entry>& entries = handler.entries(isJson);
  labels.reserve(entries.size());
  Budget replaced("too many bytes of port label keys", kMaxReplacedBytes);
  for (const auto& [portKey, label] : entries) {
    if (label.data() == nullptr) {
      throw runtimeError("portLabel entry value is not string");
    }
    const std::string_view key = mappedKey(portKey, mapper, replaced, labels);
    labels.assign(reverse ? label : key, reverse ? key : label);
  }
  logElapsed(stageStart, "    Loaded port labels");
  return labels;
}

}  // namespace quenfold
