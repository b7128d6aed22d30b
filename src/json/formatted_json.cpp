#include "json/formatted_json.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>

// The layout: an object's members stand on lines of their own, indented by one tab for each object
// or array around them, with a tab between key and value; an array's elements stand on one line.

namespace quenfold {
namespace {

constexpr std::size_t kTabs = 2;  // where they begin in the start of a member's line
constexpr std::size_t kBytes = 256;
constexpr std::size_t kMostDigits = 20;  // of a 64-bit integer, the sign included

/// By byte: whether it does not stand for itself in a quoted text.
constexpr std::array<bool, kBytes> escapedBytes() {
  constexpr std::size_t kControls = 0x20;
  std::array<bool, kBytes> escaped{};
  for (std::size_t byte = 0; byte < kControls; ++byte) {
    escaped.at(byte) = true;
  }
  escaped['"'] = true;
  escaped['\\'] = true;
  return escaped;
}

constexpr std::array<bool, kBytes> kEscaped = escapedBytes();

bool isEscaped(char c) { return kEscaped[static_cast<unsigned char>(c)]; }

void appendEscaped(std::string& out, char c) {
  constexpr std::string_view kNamed = "\"\\\b\f\n\r\t";
  constexpr std::string_view kNames = "\"\\bfnrt";
  const std::size_t named = kNamed.find(c);
  if (named != std::string_view::npos) {
    out += '\\';
    out += kNames[named];
  } else {
    out += fmt::format("\\u{:04x}", static_cast<unsigned char>(c));
  }
}

}  // namespace

void FormattedJson::beginObject() {
  open('{');
  text_ += '\n';
}

void FormattedJson::endObject() {
  if (!first_) {
    text_ += '\n';
  }
  lineStart_.pop_back();
  text_.append(lineStart_, kTabs) += '}';
  first_ = false;
}

void FormattedJson::beginArray() { open('['); }

void FormattedJson::endArray() {
  lineStart_.pop_back();
  text_ += ']';
  first_ = false;
}

void FormattedJson::key(std::string_view name) {
  text_.append(lineStart_, first_ ? kTabs : 0);
  quoted(name);
  text_ += ":\t";
  afterKey_ = true;
}

void FormattedJson::string(std::string_view text) {
  beforeValue();
  quoted(text);
}

void FormattedJson::open(char bracket) {
  beforeValue();
  text_ += bracket;
  lineStart_ += '\t';
  first_ = true;
}

/// In an array nothing but this separates the elements; in an object the key did.
void FormattedJson::beforeValue() {
  if (!first_ && !afterKey_) {
    text_ += ", ";
  }
  first_ = false;
  afterKey_ = false;
}

void FormattedJson::integer(std::int64_t value) {
  beforeValue();
  std::array<char, kMostDigits> digits;  // NOLINT(*-member-init): filled from its start
  const char* const end = std::to_chars(digits.begin(), digits.end(), value).ptr;
  text_.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

void FormattedJson::quoted(std::string_view text) {
  text_ += '"';
  while (true) {
    const auto* const escaped = std::find_if(text.begin(), text.end(), isEscaped);
    const auto plain = static_cast<std::size_t>(escaped - text.begin());
    text_.append(text.substr(0, plain));
    if (plain == text.size()) {
      break;
    }
    appendEscaped(text_, *escaped);
    text.remove_prefix(plain + 1);
  }
  text_ += '"';
}

}  // namespace quenfold
