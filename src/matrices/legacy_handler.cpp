#include "matrices/legacy_handler.h"

#include <array>
#include <utility>

#include "matrices/legacy_format.h"
#include "matrices/port_entry.h"

namespace quenfold::packing {
namespace {

/// By level, what opens the next one. From a port the way leads nowhere.
constexpr std::array kWayOn = {rapidjson::kObjectType, rapidjson::kObjectType,
                               rapidjson::kArrayType,  rapidjson::kObjectType,
                               rapidjson::kArrayType,  rapidjson::kObjectType};

JsonValue textValue(std::string_view text) {
  return JsonValue(rapidjson::StringRef(text.data(), text.size()));
}

}  // namespace

/// Where the value that comes next belongs.
void LegacyHandler::expect(JsonValue* target, bool leadsOn) {
  target_ = target != nullptr && target->IsNull() ? target : nullptr;
  leadsOn_ = leadsOn && target_ != nullptr;
}

void LegacyHandler::enterMember(std::string_view name) {
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

JsonValue* LegacyHandler::matrixMember(std::string_view name) {
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

JsonValue* LegacyHandler::portMember(std::string_view name) {
  LegacyPort& port = file_.ports.back();
  if (name == kPortName) {
    return &port.port;
  }
  return name == kPortLabel ? &port.label : nullptr;
}

/// Of elements after one that is no object none counts.
void LegacyHandler::endEarly() {
  if (level_ == kInMatrices) {
    file_.list.emplace_back();
  } else {
    file_.list.back().portsEndEarly = true;
  }
  leadsOn_ = false;
}

bool LegacyHandler::start(rapidjson::Type type) {
  if (skipped_ == 0 && leadsOn_ && kWayOn.at(level_) == type) {
    stepIn(type);
  } else {
    put(JsonValue(type));
    ++skipped_;
  }
  return true;
}

void LegacyHandler::stepIn(rapidjson::Type type) {
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

bool LegacyHandler::end() {
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
void LegacyHandler::takeEntriesAhead() {
  while (const auto entry = takeNextPortEntry(*place_)) {
    file_.ports.push_back({textValue(entry->port), textValue(entry->label)});
    ++file_.list.back().portCount;
  }
}

}  // namespace quenfold::packing
