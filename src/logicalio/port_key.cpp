#include "logicalio/port_key.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace quenfold {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t kPortKeyCapacity = 191;
constexpr std::size_t kTextCapacity = 63;
constexpr std::size_t kTypeCapacity = 15;
constexpr std::size_t kIdKeyCapacity = 63;

struct ScannedNumber {
  bool negative = false;
  std::uint64_t magnitude = 0;  // the largest one when there are too many digits
};

/// Takes one conversion after the other off a text. Each tells whether it succeeded.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  bool literal(std::string_view expected) {
    if (rest_.substr(0, expected.size()) != expected) {
      return false;
    }
    rest_.remove_prefix(expected.size());
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
  bool decimal(std::int32_t& out) {
    ScannedNumber number;
    if (!signedDigits(10, number)) {
      return false;
    }
    constexpr std::int64_t kMax = std::numeric_limits<std::int32_t>::max();
    const std::uint64_t limit = static_cast<std::uint64_t>(kMax) + (number.negative ? 1 : 0);
    const auto magnitude = static_cast<std::int64_t>(std::min(number.magnitude, limit));
    out = static_cast<std::int32_t>(number.negative ? -magnitude : magnitude);
    return true;
  }

  /// "%X"
  bool hexadecimal(std::uint32_t& out) {
    ScannedNumber number;
    if (!signedDigits(16, number)) {
      return false;
    }
    constexpr std::uint32_t kMax = std::numeric_limits<std::uint32_t>::max();
    const bool fits = number.magnitude <= kMax;
    const auto magnitude = static_cast<std::uint32_t>(number.magnitude);
    out = fits ? (number.negative ? 0U - magnitude : magnitude) : kMax;
    return true;
  }

 private:
  bool signedDigits(int base, ScannedNumber& number) {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\n\v\f\r"), rest_.size()));
    number.negative = literal("-");
    if (!number.negative) {
      literal("+");
    }
    if (base == 16 && !literal("0x")) {
      literal("0X");
    }
    const char* const end = rest_.data() + rest_.size();
    const auto [stop, status] = std::from_chars(rest_.data(), end, number.magnitude, base);
    if (status == std::errc::invalid_argument) {
      return false;
    }
    if (status == std::errc::result_out_of_range) {
      number.magnitude = std::numeric_limits<std::uint64_t>::max();
    }
    rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
    return true;
  }

  std::string_view rest_;
};

/// What an ID key is made of, in the order of its text: a field and the characters after it.
struct IdKeyPart {
  PortField field;
  std::string_view after;
};

constexpr std::array<IdKeyPart, kPortFieldCount> kIdKeyParts = {
    {{kDevice, "."}, {kSlot, "."}, {kPortPrefix, "["}, {kPortId, "]."}, {kType, "."}, {kCh, ""}}};

}  // namespace

std::optional<PortKeyText> scanPortKey(std::string_view key) {
  PortKeyText fields;
  Scanner scanner(key);
  const bool scanned =
      key.size() <= kPortKeyCapacity && scanner.textBefore('.', kTextCapacity, fields.device) &&
      scanner.textBefore('.', kTextCapacity, fields.slot) &&
      scanner.textBefore('[', kTextCapacity, fields.portPrefix) && scanner.decimal(fields.portId) &&
      scanner.literal("].") && scanner.textBefore('.', kTypeCapacity, fields.type) &&
      scanner.literal("ch") && scanner.decimal(fields.ch);
  return scanned ? std::optional(fields) : std::nullopt;
}

void appendPortKeyHead(fmt::memory_buffer& key, std::string_view device, std::string_view slot,
                       std::string_view portPrefix) {
  key.append(device);
  key.push_back('.');
  key.append(slot);
  key.push_back('.');
  key.append(portPrefix);
  key.push_back('[');
}

void appendPortKeyTail(fmt::memory_buffer& key, std::int32_t portId, std::string_view type,
                       std::int32_t ch) {
  const fmt::format_int portIdDigits(portId);
  const fmt::format_int chDigits(ch);
  key.append(portIdDigits.data(), portIdDigits.data() + portIdDigits.size());
  key.append("]."sv);
  key.append(type);
  key.append(".ch"sv);
  key.append(chDigits.data(), chDigits.data() + chDigits.size());
}

std::string printPortKey(const PortKeyText& fields) {
  fmt::memory_buffer key;
  appendPortKeyHead(key, fields.device, fields.slot, fields.portPrefix);
  appendPortKeyTail(key, fields.portId, fields.type, fields.ch);
  return fmt::to_string(key);
}

PortKeyIds scanIdKey(std::string_view key) {
  PortKeyIds ids{};
  if (key.size() > kIdKeyCapacity) {
    return ids;
  }
  Scanner scanner(key);
  for (const IdKeyPart& part : kIdKeyParts) {
    if (!scanner.hexadecimal(ids.at(part.field)) || !scanner.literal(part.after)) {
      return ids;
    }
  }
  return ids;
}

std::string printIdKey(const PortKeyIds& ids) {
  return fmt::format("{:X}.{:X}.{:X}[{:X}].{:X}.{:X}", ids[kDevice], ids[kSlot], ids[kPortPrefix],
                     ids[kPortId], ids[kType], ids[kCh]);
}

}  // namespace quenfold
