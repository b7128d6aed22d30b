#include "matrices/legacy_matrices.h"

#include <array>
#include <string_view>
#include <utility>

#include "matrices/legacy_format.h"
#include "matrices/port_entry.h"

namespace quenfold::packing {
namespace {

/// Where the parser stands on the one way through the file that counts.
enum Level : std::size_t {
  kOutside,
  kInRoot,
  kInConfig,
  kInMatrices,
  kInMatrix,
  kInPorts,
  kInPort
};

/// By level, what opens the next one. Nothing that counts lies in a port's members.
constexpr std::array<rapidjson::Type, 7> kWayOn = {
    rapidjson::kObjectType, rapidjson::kObjectType, rapidjson::kArrayType, rapidjson::kObjectType,
    rapidjson::kArrayType,  rapidjson::kObjectType, rapidjson::kNullType};

/// Takes the parser's events and keeps what lies on the way. All else is skipped, the later ones of
/// members with the same name included.
class LegacyHandler : public rapidjson::BaseReaderHandler<JsonEncoding, LegacyHandler> {
 public:
  explicit LegacyHandler(LegacyMatrices& file) : file_(file) {}

  void parseFrom(char** place) { place_ = place; }

  // NOLINTBEGIN(readability-identifier-naming): the names are the library's
  bool Null() { return put(JsonValue(false)); }
  bool Bool(bool value) { return put(JsonValue(value)); }
  bool RawNumber(const char* digits, rapidjson::SizeType length, bool /*copy*/) {
    return put(jsonNumber({digits, length}));
  }
  bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
    return put(JsonValue(rapidjson::StringRef(text, length)));
  }
  bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
    if (skipped_ == 0) {
      enterMember({text, length});
    }
    return true;
  }
  bool StartObject() { return start(rapidjson::kObjectType); }
  bool EndObject(rapidjson::SizeType /*members*/) { return end(); }
  bool StartArray() { return start(rapidjson::kArrayType); }
  bool EndArray(rapidjson::SizeType /*elements*/) { return end(); }
  // NOLINTEND(readability-identifier-naming)

 private:
  /// Where the value that comes next belongs.
  void expect(JsonValue* target, bool leadsOn) {
    target_ = target != nullptr && target->IsNull() ? target : nullptr;
    leadsOn_ = leadsOn && target_ != nullptr;
  }

  void enterMember(std::string_view name) {
    switch (level_) {
      case kInRoot:
        return expect(name == kConfig ? &file_.config : nullptr, true);
      case kInConfig:
        return expect(name == kMatrices ? &file_.matrices : nullptr, true);
      case kInMatrix:
        return expect(matrixMember(name), name == kMatrixPorts);
      default:
        return expect(portMember(name), false);
    }
  }

  JsonValue* matrixMember(std::string_view name) {
    LegacyMatrix& matrix = file_.list.back();
    const std::array<std::pair<std::string_view, JsonValue*>, 5> members = {
        {{kMatrixName, &matrix.name},
         {kMatrixSerial, &matrix.serial},
         {kMatrixId, &matrix.id},
         {kMatrixType, &matrix.type},
         {kMatrixPorts, &matrix.ports}}};
    for (const auto& [memberName, member] : members) {
      if (name == memberName) {
        return member;
      }
    }
    return nullptr;
  }

  JsonValue* portMember(std::string_view name) {
    LegacyPort& port = file_.ports.back();
    if (name == kPortName) {
      return &port.port;
    }
    return name == kPortLabel ? &port.label : nullptr;
  }

  bool put(JsonValue value) {
    if (skipped_ > 0) {
      return true;
    }
    if (target_ != nullptr) {
      *target_ = std::move(value);
    } else if (leadsOn_) {
      endEarly();
    }
    return true;
  }

  /// Of elements after one that is no object none counts.
  void endEarly() {
    if (level_ == kInMatrices) {
      file_.list.emplace_back();
    } else {
      file_.list.back().portsEndEarly = true;
    }
    leadsOn_ = false;
  }

  bool start(rapidjson::Type type) {
    if (skipped_ == 0 && leadsOn_ && kWayOn.at(level_) == type) {
      stepIn(type);
    } else {
      put(JsonValue(type));
      ++skipped_;
    }
    return true;
  }

  void stepIn(rapidjson::Type type) {
    if (level_ == kInMatrices) {
      file_.list.emplace_back().isObject = true;
    } else if (level_ == kInPorts) {
      file_.ports.emplace_back();
      ++file_.list.back().portCount;
    } else {
      *target_ = JsonValue(type);
    }
    target_ = nullptr;
    level_ = static_cast<Level>(level_ + 1);
  }

  bool end() {
    if (skipped_ > 0) {
      --skipped_;
    } else {
      level_ = static_cast<Level>(level_ - 1);
      target_ = nullptr;
      leadsOn_ = true;
      if (level_ == kInPorts) {
        takeEntriesAhead();
      }
    }
    return true;
  }

  /// What the parser would make of the next ports, as long as they are spelled as usual.
  void takeEntriesAhead() {
    while (const auto entry = takeNextPortEntry(*place_)) {
      file_.ports.push_back({textValue(entry->port), textValue(entry->label)});
      ++file_.list.back().portCount;
    }
  }

  static JsonValue textValue(std::string_view text) {
    return JsonValue(rapidjson::StringRef(text.data(), text.size()));
  }

  LegacyMatrices& file_;
  char** place_ = nullptr;  // of the parser
  Level level_ = kOutside;
  std::size_t skipped_ = 0;          // open objects and arrays beside the way
  JsonValue* target_ = &file_.root;  // of the next value; null for an element or what is skipped
  bool leadsOn_ = true;              // whether the way may lead on through the next value
};

}  // namespace

LegacyMatrices parseLegacyMatrices(std::string& text) {
  LegacyMatrices file;
  LegacyHandler handler(file);
  if (!parseJsonEvents(text, handler)) {
    return {};
  }
  return file;
}

}  // namespace quenfold::packing
