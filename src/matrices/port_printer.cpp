#include "matrices/port_printer.h"

#include <fmt/format.h>

#include <algorithm>

#include "app/limits.h"

namespace quenfold::unpacking {
namespace {

/// A sign, a prefix and 32 binary digits.
constexpr std::uint64_t kLongestUnpadded = 35;

/// The bytes of the longest fill character.
constexpr std::uint64_t kFillBytes = 4;

constexpr std::string_view kBraces = "{}";

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The numbers in what stands behind the colon and the fill of a field added up, each cut above the
/// limit. A field within it takes its width from the port number.
std::uint64_t widthsIn(std::string_view fieldFormat, std::int32_t last) {
  std::uint64_t sum = 0;
  std::uint64_t number = 0;
  for (const char c : fieldFormat) {
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
/// whatever it is, even a brace. `fieldFormat` is what stands behind the colon.
std::size_t fillLength(std::string_view fieldFormat) {
  constexpr std::string_view kAlignments = "<>^";
  const auto lead = static_cast<unsigned char>(fieldFormat.empty() ? '\0' : fieldFormat[0]);
  const bool leads = lead >= 0xC0 && lead < 0xF8;
  const std::size_t length = !leads ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  const bool aligned = length < fieldFormat.size() &&
                       kAlignments.find(fieldFormat[length]) != std::string_view::npos;
  return aligned ? length : 0;
}

/// The length of a field's inside, up to the brace that closes it or the end of the text.
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

void appendNumber(std::string& text, std::int32_t number) {
  const fmt::format_int digits(number);
  text.append(digits.data(), digits.size());
}

}  // namespace

std::uint64_t longestNumber(std::int32_t first, std::int32_t last) {
  return std::max(fmt::format_int(first).size(), fmt::format_int(last).size());
}

// The formatter itself cannot be asked: its sizes at both ends of the range bound neither widths
// that are summed up nor those taken from the number, and it would write out any width to measure
// it.
std::uint64_t longestPortText(std::string_view pattern, std::int32_t first, std::int32_t last) {
  const std::uint64_t plainNumber = longestNumber(first, last);
  Budget widths("port pattern too wide", kMaxPatternWidth);
  std::uint64_t bytes = 0;
  while (!pattern.empty()) {
    const bool field = pattern.front() == '{' && pattern.substr(0, 2) != "{{";
    const std::size_t skipped = pattern.substr(0, 2) == "{{" ? 2 : 1;
    pattern.remove_prefix(skipped);
    if (!field) {
      bytes += skipped;
      continue;
    }
    const std::string_view inside = pattern.substr(0, insideLength(pattern));
    const std::size_t colon = inside.find(':');
    if (colon == std::string_view::npos) {
      bytes += plainNumber;
    } else {
      const std::string_view fieldFormat = inside.substr(colon + 1);
      const std::uint64_t width = widthsIn(fieldFormat.substr(fillLength(fieldFormat)), last);
      widths.take(width);
      bytes += kLongestUnpadded + kFillBytes * width;
    }
    pattern.remove_prefix(inside.size());  // the closing brace counts as text
  }
  return bytes;
}

PortPattern splitPattern(std::string_view text) {
  const std::size_t open = text.find_first_of(kBraces);
  if (open == std::string_view::npos) {
    return {PortPattern::Kind::kText, text, {}};
  }
  if (text.substr(open, kBraces.size()) == kBraces) {
    const std::string_view back = text.substr(open + kBraces.size());
    if (back.find_first_of(kBraces) == std::string_view::npos) {
      return {PortPattern::Kind::kNumber, text.substr(0, open), back};
    }
  }
  return {PortPattern::Kind::kFormat, text, {}};
}

void appendPort(std::string& text, const PortPattern& pattern, std::int32_t port) {
  if (pattern.kind == PortPattern::Kind::kFormat) {
    text += fmt::format(fmt::runtime(pattern.front), port);
    return;
  }
  text.append(pattern.front);
  if (pattern.kind == PortPattern::Kind::kNumber) {
    appendNumber(text, port);
    text.append(pattern.back);
  }
}

PortPrinter::PortPrinter(std::size_t longest) {
  text_.reserve(longest);
  tail_.reserve(longest);
}

void PortPrinter::startBlock(std::string_view device, const PortBlock& block) {
  pattern_ = splitPattern(block.group->port);
  text_.assign(device).append(".").append(block.slot).append(".");
  head_ = text_.size();
  tail_.assign(".").append(block.type).append(".").append(kChannelPrefix);
}

void PortPrinter::startPort(std::int32_t port) {
  text_.erase(head_);
  appendPort(text_, pattern_, port);
  text_.append(tail_);
  stem_ = text_.size();
}

std::string_view PortPrinter::onChannel(std::int32_t channel) {
  text_.erase(stem_);
  appendNumber(text_, channel);
  return text_;
}

}  // namespace quenfold::unpacking
