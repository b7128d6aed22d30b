#include "database/record_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <optional>

#include "json/cjson_access.h"

namespace quenfold::database {
namespace {

constexpr std::array kHeldMembers = {kNameKey,     kIdKey,    kKeyKey,     kDescriptionKey,
                                     kCategoryKey, kTallyKey, kRedirectKey};

bool isNumber(const cJSON& value, double number) {
  return cJSON_IsNumber(&value) != 0 && value.valuedouble == number;
}

bool isText(const cJSON& value, std::string_view text) {
  const char* const own = stringValue(&value);
  return own != nullptr && own == text;
}

/// What a category of either form says; empty for what is neither text nor number.
std::string categoryText(const cJSON& item) {
  if (const char* const text = stringValue(&item)) {
    return text;
  }
  return isNumber(item, item.valueint) ? fmt::format("{}", item.valueint) : std::string();
}

/// The value as JSON.
std::string printedValue(const cJSON& value) {
  const std::unique_ptr<char, void (*)(void*)> text(cJSON_PrintUnformatted(&value), cJSON_free);
  if (text == nullptr) {
    throw std::bad_alloc();
  }
  return text.get();
}

/// Whether the id, the redirect, the tally or the description comes back with its value.
bool comesBack(const cJSON& member, const LogicalIORecord& returned) {
  const std::string_view name = memberName(member);
  if (name == kIdKey) {
    return isNumber(member, returned.id);
  }
  if (name == kRedirectKey) {
    return isNumber(member, returned.redirect);
  }
  if (name == kTallyKey) {
    return isText(member, returned.tally);
  }
  return isText(member, returned.description);
}

/// A few of them, for a name that thousands of ports bear.
std::string listed(const std::vector<std::string_view>& bearers, const std::string& packed) {
  constexpr std::size_t kMostListed = 5;
  std::vector<std::string_view> others;
  for (const std::string_view bearer : bearers) {
    if (bearer != packed && others.size() < kMostListed) {
      others.push_back(bearer);
    }
  }
  const bool isAmong = std::find(bearers.begin(), bearers.end(), packed) != bearers.end();
  const std::size_t left = bearers.size() - (isAmong ? 1 : 0) - others.size();
  return fmt::format("{}{}", fmt::join(others, ", "),
                     left == 0 ? std::string() : fmt::format(" and {} more", left));
}

using Names = std::vector<std::string_view>;

/// Whether it was not among them.
bool noteName(Names& names, std::string_view name) {
  const bool isNew = std::find(names.begin(), names.end(), name) == names.end();
  if (isNew) {
    names.push_back(name);
  }
  return isNew;
}

bool isEmptyPort(const cJSON& port) { return cJSON_IsNull(&port) != 0 || isText(port, ""); }

}  // namespace

void RecordCheck::check(const cJSON& entry, const LogicalIORecord& returned) {
  // A record without a name is not read.
  const char* const name = stringValue(findMember(&entry, kNameKey));
  Current record{returned, fmt::format("{} {} \"{}\"", table_.file, returned.id, name), {}, {}};
  Names seen;
  for (const cJSON* member = entry.child; member != nullptr; member = member->next) {
    const bool held = std::find(kHeldMembers.begin(), kHeldMembers.end(), memberName(*member)) !=
                          kHeldMembers.end() ||
                      memberName(*member) == table_.kind.portsKey;
    if (!held) {
      add(Kind::kMemberIgnored, record, memberName(*member));
      continue;
    }
    checkMember(*member, !noteName(seen, memberName(*member)), record);
  }
  checkPorts(record);
}

void RecordCheck::add(Kind kind, const Current& record, std::string_view what) {
  findings_.add(kind, table_.file, [&] { return fmt::format("{} {}", record.place, what); });
}

/// Of a member that stands twice one value is lost.
void RecordCheck::addLost(Current& record, std::string_view member) {
  if (noteName(record.lost, member)) {
    add(Kind::kFieldLost, record, member);
  }
}

void RecordCheck::checkMember(const cJSON& member, bool repeated, Current& record) {
  if (repeated) {
    addLost(record, memberName(member));
  }
  if (memberName(member) == table_.kind.portsKey) {
    for (const cJSON* port = member.child; port != nullptr; port = port->next) {
      record.ports.push_back(port);
    }
  } else if (!repeated) {
    checkValue(member, record);
  }
}

void RecordCheck::checkValue(const cJSON& member, Current& record) {
  const std::string_view name = memberName(member);
  if (name == kCategoryKey) {
    checkCategories(member, record);
  } else if (name == kKeyKey) {
    if (!isNumber(member, 0)) {
      add(Kind::kKeyChanged, record, name);
    }
  } else if (name != kNameKey && !comesBack(member, record.returned)) {
    addLost(record, name);  // a name comes back unless its id is repeated, which is told
  }
}

/// Empty ones at the end stand for none.
void RecordCheck::checkCategories(const cJSON& list, const Current& record) {
  if (repeated_.count(record.returned.id) != 0) {
    return;
  }
  const std::vector<CatEntry>& returned = record.returned.categories;
  std::size_t position = 0;
  bool same = cJSON_IsArray(&list) != 0;
  for (const cJSON* item = list.child; item != nullptr; item = item->next, ++position) {
    const bool back = position < std::min(returned.size(), kLegacyCategoryCount);
    const std::string text = back ? catEntryText(returned[position]) : std::string();
    same = same && categoryText(*item) == text && (back || isText(*item, ""));
  }
  if (!same) {
    add(Kind::kCategoryLost, record, kCategoryKey);
  }
}

void RecordCheck::checkPorts(const Current& record) {
  std::size_t position = 0;
  for (const cJSON* const port : record.ports) {
    checkPort(*port, position++, record);
  }
  const std::size_t returned = std::max(record.returned.ports.size(), table_.levelCount);
  if (returned != record.ports.size()) {
    add(Kind::kEmptyPortsLost, record, fmt::format("{} -> {}", record.ports.size(), returned));
  }
}

void RecordCheck::checkPort(const cJSON& port, std::size_t position, const Current& record) {
  if (isEmptyPort(port)) {
    return;
  }
  if (const char* const text = stringValue(&port)) {
    checkPortText(text, position, record);
  } else {
    add(Kind::kPortUnknown, record, fmt::format("port {}: {}", position + 1, printedValue(port)));
  }
}

void RecordCheck::checkPortText(std::string_view text, std::size_t position,
                                const Current& record) {
  const auto addPort = [&](Kind kind, std::string_view what) {
    add(kind, record, fmt::format("port {}: \"{}\"{}", position + 1, text, what));
  };
  const std::optional<std::string> key = names_.keyOf(text);
  if (!key) {
    addPort(Kind::kPortUnknown, "");
    return;
  }
  const std::vector<std::string>& ports = record.returned.ports;
  const std::string_view shown = names_.shownName(ports.at(position));
  const std::string back = returnedKey(shown);
  const std::vector<std::string_view>& own = names_.bearersOf(text).listed;
  if (back != *key || (own.size() < 2 && back != (own.empty() ? text : own.front()))) {
    addPort(Kind::kPortChanged, fmt::format(" -> {}", back.empty() ? "nothing" : back));
  }
  const std::vector<std::string_view>& bearers =
      own.size() > 1 || shown.empty() ? own : names_.bearersOf(shown).returned;
  if (bearers.size() > 1) {
    addPort(Kind::kPortAmbiguous, fmt::format(" -> {}, also {}", *key, listed(bearers, *key)));
  }
  if (!names_.isListed(*key)) {
    addPort(Kind::kPortDangling, "");
  }
}

/// What the text that comes back stands for: an empty one for no port, even if a port's label is.
std::string RecordCheck::returnedKey(std::string_view shown) const {
  return shown.empty() ? std::string() : names_.keyOf(shown).value_or(std::string(shown));
}

}  // namespace quenfold::database
