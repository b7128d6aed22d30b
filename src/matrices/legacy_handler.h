#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

#include "json/document.h"
#include "matrices/legacy_matrices.h"

namespace quenfold::packing {

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

  void expect(JsonValue* target, bool leadsOn);
  void enterMember(std::string_view name);
  JsonValue* matrixMember(std::string_view name);
  JsonValue* portMember(std::string_view name);

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

  void endEarly();
  bool start(rapidjson::Type type);
  void stepIn(rapidjson::Type type);
  bool end();
  void takeEntriesAhead();

  LegacyMatrices& file_;
  char** place_ = nullptr;  // of the parser
  Level level_ = kOutside;
  std::size_t skipped_ = 0;          // open objects and arrays beside the way
  JsonValue* target_ = &file_.root;  // of the next value; null for an element or what is skipped
  bool leadsOn_ = true;              // whether the way may lead on through the next value
};

}  // namespace quenfold::packing
