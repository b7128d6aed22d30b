#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace quenfold {

/// Writes JSON in cJSON's formatted layout, byte for byte what cJSON_Print() gives for the same
/// tree, without building the tree. The caller nests begin and end, and writes a key before each
/// value of an object. Texts and keys hold no zero byte. Everything throws std::bad_alloc.
class FormattedJson {
 public:
  void beginObject();
  void endObject();
  void beginArray();
  void endArray();
  void key(std::string_view name);
  void string(std::string_view text);
  void number(std::int32_t value) { integer(value); }
  void number(std::uint32_t value) { integer(value); }

  /// The text so far, which is given away.
  [[nodiscard]] std::string take() { return std::move(text_); }

 private:
  void open(char bracket);
  void beforeValue();
  void integer(std::int64_t value);
  void quoted(std::string_view text);

  std::string text_;
  std::string lineStart_ = ",\n";  // of the next member: a tab for each object or array around it
  bool first_ = true;              // nothing stands yet in the innermost object or array
  bool afterKey_ = false;          // the key of the next value has been written
};

}  // namespace quenfold
