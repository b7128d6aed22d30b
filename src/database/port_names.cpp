#include "database/port_names.h"

#include <algorithm>

#include "json/cjson_access.h"
#include "logicalio/port_key.h"

namespace quenfold::database {

namespace {

void makeUnique(std::vector<std::string_view>& names) {
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
}

}  // namespace

PortNames::PortNames(const LegacyTable& legacy, const TableContext& context) : context_(context) {
  noteTexts(legacy);
  noteListed();
  noteReturned();
  for (auto& [text, bearers] : bearers_) {
    if (isListed(text)) {
      bearers.listed.push_back(text);
      bearers.returned.push_back(text);
    }
    makeUnique(bearers.listed);
    makeUnique(bearers.returned);
  }
}

std::optional<std::string> PortNames::keyOf(std::string_view text) const {
  const std::string_view* const labelled = context_.portKeys.find(text);
  const std::optional<PortKeyText> key = scanPortKey(labelled == nullptr ? text : *labelled);
  return key ? std::optional(printPortKey(*key)) : std::nullopt;
}

std::string_view PortNames::shownName(std::string_view key) const {
  const std::string_view* const label = context_.packed.labelsByName.find(key);
  return label == nullptr ? key : *label;
}

const PortNames::Bearers& PortNames::bearersOf(std::string_view text) const {
  static const Bearers kNone;
  const auto found = bearers_.find(text);
  return found == bearers_.end() ? kNone : found->second;
}

/// Also the label that the port comes back with.
void PortNames::noteText(std::string_view text) {
  bearers_.try_emplace(text);
  const std::optional<std::string> key = keyOf(text);
  if (key) {
    const std::string_view* const label = context_.packed.labelsByName.find(*key);
    if (label != nullptr) {
      bearers_.try_emplace(*label);
    }
  }
}

void PortNames::noteTexts(const LegacyTable& legacy) {
  const cJSON* entry = firstChild(findMember(legacy.contents, legacy.kind->entriesKey));
  for (; entry != nullptr; entry = entry->next) {
    for (const cJSON* member = entry->child; member != nullptr; member = member->next) {
      if (memberName(*member) == legacy.kind->portsKey) {
        for (const cJSON* port = member->child; port != nullptr; port = port->next) {
          if (const char* const text = stringValue(port)) {
            noteText(text);
          }
        }
      }
    }
  }
}

void PortNames::noteListed() {
  for (const Port& port : context_.model.ports) {
    if (!port.label.empty()) {
      const auto used = bearers_.find(port.label);
      if (used != bearers_.end()) {
        used->second.listed.push_back(port.name);
      }
    }
  }
}

void PortNames::noteReturned() {
  for (const PortLabelMap::Entry& entry : context_.packed.labelsByName.entries()) {
    const auto used = bearers_.find(entry.label);
    if (used != bearers_.end()) {
      used->second.returned.push_back(entry.key);
    }
  }
}

}  // namespace quenfold::database
