#include "matrices/port_pattern.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "app/limits.h"

namespace quenfold::unpacking {
namespace {

/// A sign, a prefix and 32 binary digits.
constexpr std::uint64_t kLongestUnpadded = 35;

/// The bytes of the longest fill character.
constexpr std::uint64_t kFillBytes = 4;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The numbers in what stands behind the colon of a place added up, each cut above the limit. A
/// place within it takes its width from the port number.
std::uint64_t widthsIn(std::string_view layout, std::int32_t last) {
  std::uint64_t sum = 0;
  std::uint64_t number = 0;
  for (const char c : layout) {
    if (isDigit(c)) {
      number = std::min(number * 10 + static_cast<std::uint64_t>(c - '0'), kMaxPatternWidth + 1);
      continue;
    }
    sum += number + (c == '{' ? static_cast<std::uint64_t>(std::max(last, 0)) : 0);
    number = 0;
  }
  return sum + number;
}

/// The length of a place's inside, up to the brace that closes it or the end of the text.
std::size_t insideLength(std::string_view text) {
  int open = 1;
  std::size_t length = 0;
  for (; length < text.size(); ++length) {
    open += text[length] == '{' ? 1 : (text[length] == '}' ? -1 : 0);
    if (open == 0) {
      break;
    }
  }
  return length;
}

}  // namespace

PortPattern splitPattern(std::string_view text) {
  constexpr std::string_view kBraces = "{}";
  const std::size_t open = text.find_first_of(kBraces);
  if (open == std::string_view::npos) {
    return {PortPattern::Kind::kText, text, {}, {}};
  }
  if (text.substr(open, kBraces.size()) == kBraces) {
    const std::string_view back = text.substr(open + kBraces.size());
    if (back.find_first_of(kBraces) == std::string_view::npos) {
      return {PortPattern::Kind::kNumber, text.substr(0, open), back, {}};
    }
  }
  return {PortPattern::Kind::kFormat, {}, {}, text};
}

char* printPort(const PortPattern& pattern, std::int32_t port, char* begin, char* limit) {
  if (pattern.kind == PortPattern::Kind::kNumber) {
    return std::to_chars(begin, limit, port).ptr;
  }
  if (pattern.kind == PortPattern::Kind::kFormat) {
    const auto room = static_cast<std::size_t>(limit - begin);
    return fmt::format_to_n(begin, room, fmt::runtime(pattern.format), port).out;
  }
  return begin;
}

std::uint64_t longestNumber(std::int32_t first, std::int32_t last) {
  return std::max(fmt::formatted_size("{}", first), fmt::formatted_size("{}", last));
}

std::uint64_t longestPortText(std::string_view pattern, std::int32_t first, std::int32_t last) {
  const std::uint64_t plainNumber = longestNumber(first, last);
  Budget widths("port pattern too wide", kMaxPatternWidth);
  std::uint64_t bytes = 0;
  while (!pattern.empty()) {
    const bool place = pattern.front() == '{' && pattern.substr(0, 2) != "{{";
    const std::size_t skipped = pattern.substr(0, 2) == "{{" ? 2 : 1;
    pattern.remove_prefix(skipped);
    if (!place) {
      bytes += skipped;
      continue;
    }
    const std::string_view inside = pattern.substr(0, insideLength(pattern));
    const std::size_t colon = inside.find(':');
    if (colon == std::string_view::npos) {
      bytes += plainNumber;
    } else {
      const std::uint64_t width = widthsIn(inside.substr(colon), last);
      widths.take(width);
      bytes += kLongestUnpadded + kFillBytes * width;
    }
    pattern.remove_prefix(inside.size());  // the closing brace counts as text
  }
  return bytes;
}

}  // namespace quenfold::unpacking
