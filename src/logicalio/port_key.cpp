#include "logicalio/port_key.h"

#include <algorithm>
#include <limits>

namespace quenfold {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t kPortKeyCapacity = 191;
constexpr std::size_t kTextCapacity = 63;
constexpr std::size_t kTypeCapacity = 15;
constexpr std::size_t kIdKeyCapacity = 63;

constexpr std::uint8_t kNoDigit = 255;

/// By byte: the value of a digit of any base up to 16.
constexpr std::array<std::uint8_t, 256> digitValues() {
  constexpr std::string_view kUpper = "0123456789ABCDEF";
  constexpr std::string_view kLower = "0123456789abcdef";
  std::array<std::uint8_t, 256> values{};
  for (std::uint8_t& value : values) {
    value = kNoDigit;
  }
  for (std::size_t value = 0; value < kUpper.size(); ++value) {
    values[static_cast<unsigned char>(kUpper[value])] = static_cast<std::uint8_t>(value);
    values[static_cast<unsigned char>(kLower[value])] = static_cast<std::uint8_t>(value);
  }
  return values;
}

constexpr std::array<std::uint8_t, 256> kDigitValues = digitValues();

/// More than any field takes.
constexpr std::uint64_t kBeyondFields = std::uint64_t{1} << 40U;

struct ScannedNumber {
  bool negative = false;
  std::uint64_t magnitude = 0;  // at most kBeyondFields
};

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

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
  bool signedDigits(std::uint32_t base, ScannedNumber& number) {
    while (!rest_.empty() && isBlank(rest_.front())) {
      rest_.remove_prefix(1);
    }
    if (!rest_.empty() && (rest_.front() == '-' || rest_.front() == '+')) {
      number.negative = rest_.front() == '-';
      rest_.remove_prefix(1);
    }
    if (base == 16 && rest_.size() > 1 && rest_[0] == '0' && (rest_[1] == 'x' || rest_[1] == 'X')) {
      rest_.remove_prefix(2);
    }
    return digits(base, number.magnitude);
  }

  bool digits(std::uint32_t base, std::uint64_t& magnitude) {
    std::size_t count = 0;
    for (const char c : rest_) {
      const std::uint32_t value = kDigitValues[static_cast<unsigned char>(c)];
      if (value >= base) {
        break;
      }
      magnitude = std::min(magnitude * base + value, kBeyondFields);
      ++count;
    }
    rest_.remove_prefix(count);
    return count > 0;
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
