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

/// Takes the parser's events and fills a map from the members of the root's "portLabels", the first
/// one of that name. Levels count the objects and arrays around an event.
class PortLabelsHandler : public rapidjson::BaseReaderHandler<JsonEncoding, PortLabelsHandler> {
 public:
  PortLabelsHandler(PortLabelMap& labels, bool reverse, const DeviceMapper& mapper)
      : labels_(labels), reverse_(reverse), mapper_(mapper) {}

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

  /// Once the whole file has been parsed. Throws what `loadPortLabels` says of its shape.
  void checkShape(bool isJson) const {
    if (!isJson || root_ != kObject) {
      throw runtimeError("loadPortLabels root is not object");
    }
    if (section_ == kMissing) {
      throw runtimeError("{} not found", kPortLabelsSection);
    }
    if (section_ != kObject) {
      throw runtimeError("{} is not object", kPortLabelsSection);
    }
    if (!onlyStrings_) {
      throw runtimeError("portLabel entry value is not string");
    }
  }

 private:
  enum Shape { kMissing, kObject, kOther };

  /// `text` has null data for what is no string.
  bool value(Shape shape, std::string_view text = {}) {
    if (inSection_ && level_ == 2) {
      addEntry(text);
    } else if (level_ == 0) {
      root_ = shape;
    } else if (level_ == 1 && root_ == kObject && section_ == kMissing &&
               key_ == kPortLabelsSection) {
      section_ = shape;
      inSection_ = shape == kObject;
    }
    return true;
  }

  /// What is no string is reported only when the whole file has proved to be JSON.
  void addEntry(std::string_view text) {
    onlyStrings_ = onlyStrings_ && text.data() != nullptr;
    if (onlyStrings_) {
      const std::string_view key = mappedKey(upToZero(key_));
      const std::string_view label = upToZero(text);
      labels_.assign(reverse_ ? label : key, reverse_ ? key : label);
    }
  }

  static std::string_view upToZero(std::string_view text) {
    return text.substr(0, text.find('\0'));
  }

  /// A device's long replacement is copied into each of its keys: `replaced_` counts that.
  std::string_view mappedKey(std::string_view key) {
    const std::size_t dot = key.find('.');
    if (mapper_ && dot != std::string_view::npos) {
      const std::string_view mapped = mapper_(key.substr(0, dot));
      if (!mapped.empty()) {
        replaced_.take(mapped.size());
        return labels_.keepJoined(mapped, key.substr(dot));
      }
    }
    return key;
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
  bool onlyStrings_ = true;  // the section's entries
  std::string_view key_;     // of the value that comes next
  PortLabelMap& labels_;
  bool reverse_;
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
  PortLabelsHandler handler(labels, reverse, mapper);
  handler.checkShape(parseJsonEvents(text, handler));
  logElapsed(stageStart, "    Loaded port labels");
  return labels;
}

}  // namespace quenfold
