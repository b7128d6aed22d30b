#include "logicalio/port_key.h"

#include <fmt/core.h>

#include "app/text.h"

namespace quenfold {
namespace {

constexpr std::size_t kPortKeyCapacity = 191;
constexpr std::size_t kTextCapacity = 63;
constexpr std::size_t kTypeCapacity = 15;
constexpr std::size_t kIdKeyCapacity = 63;

/// Takes one conversion after the other off a text. Each tells whether it succeeded.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  bool literal(std::string_view expected) {
    for (const char c : expected) {
      if (rest_.empty() || rest_.front() != c) {
        return false;
      }
      rest_.remove_prefix(1);
    }
    return true;
  }

  /// "%[^s]s" for the stop character s: at least one character, then the stop.
  bool textBefore(char stop, std::size_t capacity, std::string_view& out) {
    const std::size_t length = rest_.find(stop);
    if (length == std::string_view::npos || length == 0 || length > capacity) {
      return false;
    }
    out = rest_.substr(0, length);
    rest_.remove_prefix(length + 1);
    return true;
  }

  /// "%d"
  bool decimal(std::int32_t& out) { return take(scanSigned(rest_, out, 10)); }

  /// "%X"
  bool hexadecimal(std::uint32_t& out) { return take(scanUnsigned(rest_, out, 16)); }

 private:
  bool take(std::size_t length) {
    rest_.remove_prefix(length);
    return length > 0;
  }

  std::string_view rest_;
};

/// What an ID key is made of, in the order of its text: a field and the characters after it.
struct IdKeyPart {
  std::uint32_t PortKeyIds::*field;
  std::string_view after;
};

constexpr std::array<IdKeyPart, kPortFieldCount> kIdKeyParts = {{{&PortKeyIds::device, "."},
                                                                 {&PortKeyIds::slot, "."},
                                                                 {&PortKeyIds::port_prefix, "["},
                                                                 {&PortKeyIds::port_id, "]."},
                                                                 {&PortKeyIds::type, "."},
                                                                 {&PortKeyIds::ch, ""}}};

}  // namespace

std::optional<PortKeyText> scanPortKey(std::string_view key) {
  PortKeyText fields;
  Scanner scanner(key);
  const bool scanned = key.size() <= kPortKeyCapacity &&
                       scanner.textBefore('.', kTextCapacity, fields.device) &&
                       scanner.textBefore('.', kTextCapacity, fields.slot) &&
                       scanner.textBefore('[', kTextCapacity, fields.port_prefix) &&
                       scanner.decimal(fields.port_id) && scanner.literal("].") &&
                       scanner.textBefore('.', kTypeCapacity, fields.type) &&
                       scanner.literal("ch") && scanner.decimal(fields.ch);
  return scanned ? std::optional(fields) : std::nullopt;
}

std::string printPortKey(const PortKeyText& fields) {
  return fmt::format("{}.{}.{}[{}].{}.ch{}", fields.device, fields.slot, fields.port_prefix,
                     fields.port_id, fields.type, fields.ch);
}

PortKeyIds scanIdKey(std::string_view key) {
  PortKeyIds ids;
  if (key.size() > kIdKeyCapacity) {
    return ids;
  }
  Scanner scanner(key);
  for (const IdKeyPart& part : kIdKeyParts) {
    if (!scanner.hexadecimal(ids.*part.field) || !scanner.literal(part.after)) {
      return ids;
    }
  }
  return ids;
}

std::string printIdKey(const PortKeyIds& ids) {
  return fmt::format("{:X}.{:X}.{:X}[{:X}].{:X}.{:X}", ids.device, ids.slot, ids.port_prefix,
                     ids.port_id, ids.type, ids.ch);
}

}  // namespace quenfold
