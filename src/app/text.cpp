#include "app/text.h"

#include <charconv>
#include <limits>
#include <system_error>

#include "app/error.h"

namespace quenfold {
namespace {

struct ScannedInteger {
  bool negative = false;
  bool overflow = false;
  std::uint64_t magnitude = 0;
  std::size_t length = 0;  // characters consumed, 0 when there is no number
};

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Whether "0x" stands before a hexadecimal digit; without one only the "0" is a number.
bool hasHexPrefix(std::string_view digits) {
  return digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X') &&
         isHexDigit(digits[2]);
}

ScannedInteger scanInteger(std::string_view text, int base) {
  if (base < 0 || base == 1 || base > 36) {
    return {};
  }
  std::string_view digits = text;
  while (!digits.empty() && isBlank(digits.front())) {
    digits.remove_prefix(1);
  }
  ScannedInteger number;
  number.negative = !digits.empty() && digits.front() == '-';
  if (number.negative || (!digits.empty() && digits.front() == '+')) {
    digits.remove_prefix(1);
  }
  if ((base == 0 || base == 16) && hasHexPrefix(digits)) {
    digits.remove_prefix(2);
    base = 16;
  } else if (base == 0) {
    base = !digits.empty() && digits[0] == '0' ? 8 : 10;
  }
  const char* const end = digits.data() + digits.size();
  const auto [stop, status] = std::from_chars(digits.data(), end, number.magnitude, base);
  if (status == std::errc::invalid_argument) {
    return {};
  }
  number.overflow = status == std::errc::result_out_of_range;
  number.length = static_cast<std::size_t>(stop - text.data());
  return number;
}

/// Whether the number fits the type; the type's limit when it does not.
bool storeUnsigned(const ScannedInteger& number, std::uint32_t& out) {
  constexpr std::uint32_t kMax = std::numeric_limits<std::uint32_t>::max();
  const bool fits = !number.overflow && number.magnitude <= kMax;
  const auto magnitude = static_cast<std::uint32_t>(number.magnitude);
  out = fits ? (number.negative ? 0U - magnitude : magnitude) : kMax;
  return fits;
}

bool storeSigned(const ScannedInteger& number, std::int32_t& out) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::uint64_t largest = number.negative ? std::uint64_t{1} << 31U : Limits::max();
  if (number.overflow || number.magnitude > largest) {
    out = number.negative ? Limits::min() : Limits::max();
    return false;
  }
  const auto magnitude = static_cast<std::int64_t>(number.magnitude);
  out = static_cast<std::int32_t>(number.negative ? -magnitude : magnitude);
  return true;
}

}  // namespace

std::vector<std::string> split(std::string_view text, char delimiter) {
  std::vector<std::string> pieces;
  while (true) {
    const std::size_t end = text.find(delimiter);
    pieces.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) {
      return pieces;
    }
    text.remove_prefix(end + 1);
  }
}

std::array<TokenRange, 5> split_itr(std::string_view text, char delimiter) {
  std::array<TokenRange, 5> tokens;
  std::size_t begin = 0;
  for (TokenRange& token : tokens) {
    const std::size_t end = text.find(delimiter, begin);
    token = {begin, end == std::string_view::npos ? text.size() : end};
    if (end == std::string_view::npos) {
      return tokens;
    }
    begin = end + 1;
  }
  throw runtimeError("split_itr - too many tokens.");
}

bool parseUnsigned(std::string_view str, std::uint32_t& out, int base) {
  const ScannedInteger number = scanInteger(str, base);
  return storeUnsigned(number, out) && number.length > 0;
}

bool parseSigned(std::string_view str, std::int32_t& out, int base) {
  const ScannedInteger number = scanInteger(str, base);
  return storeSigned(number, out) && number.length > 0;
}

std::size_t scanUnsigned(std::string_view str, std::uint32_t& out, int base) {
  const ScannedInteger number = scanInteger(str, base);
  storeUnsigned(number, out);
  return number.length;
}

std::size_t scanSigned(std::string_view str, std::int32_t& out, int base) {
  const ScannedInteger number = scanInteger(str, base);
  storeSigned(number, out);
  return number.length;
}

bool parseWholeUnsigned(std::string_view str, std::uint32_t& out) {
  const ScannedInteger number = scanInteger(str, 10);
  return storeUnsigned(number, out) && number.length > 0 && number.length == str.size();
}

}  // namespace quenfold
