#include "matrices/port_pattern.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <system_error>

#include "app/error.h"
#include "app/limits.h"

namespace quenfold::unpacking {
namespace {

/// A sign, a prefix and 32 binary digits.
constexpr std::uint64_t kLongestUnpadded = 35;

/// The bytes of the longest fill character.
constexpr std::uint64_t kFillBytes = 4;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The numbers in what stands behind the colon and the fill of a place added up, each cut above the
/// limit. A place within it takes its width from the port number.
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

/// The bytes of the character that the formatter takes for a fill: the one before an alignment,
/// whatever it is, even a brace. `layout` is what stands behind the colon.
std::size_t fillLength(std::string_view layout) {
  constexpr std::string_view kAlignments = "<>^";
  const auto lead = static_cast<unsigned char>(layout.empty() ? '\0' : layout.front());
  const bool leads = lead >= 0xC0 && lead < 0xF8;
  const std::size_t length = !leads ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  const bool aligned =
      length < layout.size() && kAlignments.find(layout[length]) != std::string_view::npos;
  return aligned ? length : 0;
}

/// The length of a place's inside, up to the brace that closes it or the end of the text.
std::size_t insideLength(std::string_view text) {
  std::size_t length = std::min(text.find_first_of(":{}"), text.size());
  if (length < text.size() && text[length] == ':') {
    length += 1 + fillLength(text.substr(length + 1));
  }
  std::size_t open = 1;
  for (; length < text.size(); ++length) {
    open += text[length] == '{' ? 1U : 0U;
    open -= text[length] == '}' ? 1U : 0U;
    if (open == 0) {
      break;
    }
  }
  return length;
}

void requireRoom(bool fits) {
  if (!fits) {
    throw lengthError("port name too long");
  }
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
    const auto [end, status] = std::to_chars(begin, limit, port);
    requireRoom(status == std::errc());
    return end;
  }
  if (pattern.kind == PortPattern::Kind::kFormat) {
    const auto room = static_cast<std::size_t>(limit - begin);
    const auto printed = fmt::format_to_n(begin, room, fmt::runtime(pattern.format), port);
    requireRoom(printed.size <= room);
    return printed.out;
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
      const std::string_view layout = inside.substr(colon + 1);
      const std::uint64_t width = widthsIn(layout.substr(fillLength(layout)), last);
      widths.take(width);
      bytes += kLongestUnpadded + kFillBytes * width;
    }
    pattern.remove_prefix(inside.size());  // the closing brace counts as text
  }
  return bytes;
}

}  // namespace quenfold::unpacking
