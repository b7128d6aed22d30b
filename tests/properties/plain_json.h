#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quenfold::properties {

/// A JSON value, read by nothing that the program uses.
struct PlainJson {
  enum class Kind { kLiteral, kText, kArray, kObject };

  Kind kind = Kind::kLiteral;
  std::string text;  // of a string without its escapes; of a number, true, false or null as it is
  std::vector<PlainJson> elements;
  std::vector<std::pair<std::string, PlainJson>> members;  // in their order, repeated ones too

  [[nodiscard]] bool isText() const { return kind == Kind::kText; }
  /// The first of that name, or null.
  [[nodiscard]] const PlainJson* find(std::string_view name) const;
  [[nodiscard]] PlainJson* find(std::string_view name);
  /// The same; the letter case does not count.
  [[nodiscard]] const PlainJson* findAnyCase(std::string_view name) const;
  [[nodiscard]] PlainJson* findAnyCase(std::string_view name);
};

/// Throws std::runtime_error for what is no JSON.
PlainJson parsePlainJson(std::string_view text);

/// The same of a file. Throws for one that cannot be read as well.
PlainJson readPlainJson(const std::string& path);

/// The text in quotes and escaped.
std::string inQuotes(std::string_view text);

/// The value as JSON, blanks left out.
std::string jsonOf(const PlainJson& value);

}  // namespace quenfold::properties
