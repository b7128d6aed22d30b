#include "json/formatted_json.h"

#include <array>
#include <charconv>

#include "json/escape.h"
#include "json/plain_run.h"

// The layout: an object's members stand on lines of their own, indented by one tab for each object
// or array around them, with a tab between key and value; an array's elements stand on one line.

namespace quenfold {
namespace {

constexpr std::size_t kTabs = 2;         // where they begin in the start of a member's line
constexpr std::size_t kMostDigits = 11;  // of a 32-bit integer, the sign included

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
  if (isPlainRun(text)) {
    text_.append(text);
  } else {
    appendEscaped(text_, text, kCJsonDigits);
  }
  text_ += '"';
}

}  // namespace quenfold
