#include "json/document.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <system_error>
#include <utility>

#include "app/error.h"

// The library asks for memory and frees it as C does.
// NOLINTBEGIN(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)

namespace quenfold {
namespace {

/// Whether all of the text is an integer of that type, which is then stored.
template <typename Integer>
bool isWhole(std::string_view text, Integer& number) {
  const char* const end = text.data() + text.size();
  const auto [stop, status] = std::from_chars(text.data(), end, number);
  return status == std::errc() && stop == end;
}

/// Builds a document from the parser's events.
class DocumentBuilder : public JsonDocument {
 public:
  void build(std::string& text) {
    const auto parse = [&](const JsonDocument& /*itself*/) { return parseJsonEvents(text, *this); };
    Populate(parse);
  }

  void parseFrom(char** /*place*/) {}

  bool RawNumber(const char* digits, rapidjson::SizeType length, bool /*copy*/) {  // NOLINT
    return jsonNumber({digits, length}).Accept(*this);
  }
};

}  // namespace

void throwJsonAssertion(const char* condition) {
  throw lengthError("JSON library condition failed: {}", condition);
}

void* JsonAllocator::Malloc(std::size_t size) { return Realloc(nullptr, 0, size); }

void* JsonAllocator::Realloc(void* memory, std::size_t /*oldSize*/, std::size_t newSize) {
  if (newSize == 0) {
    std::free(memory);
    return nullptr;
  }
  void* const resized = std::realloc(memory, newSize);
  if (resized == nullptr) {
    throw std::bad_alloc();
  }
  return resized;
}

void JsonAllocator::Free(void* memory) { std::free(memory); }

JsonValue jsonNumber(std::string_view digits) {
  if (std::int64_t whole = 0; isWhole(digits, whole)) {
    return JsonValue(whole);
  }
  if (std::uint64_t whole = 0; isWhole(digits, whole)) {
    return JsonValue(whole);
  }
  return JsonValue(std::strtod(std::string(digits).c_str(), nullptr));
}

JsonDocument parseJson(std::string& text) {
  DocumentBuilder builder;
  builder.build(text);
  return {std::move(builder)};
}

void PrettyJsonWriter::text(std::string_view text) {
  if (!isPlainRun(text)) {
    String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    return;
  }
  PrettyPrefix(rapidjson::kStringType);
  char* const place = os_->Push(text.size() + 2);
  place[0] = '"';
  std::copy(text.begin(), text.end(), place + 1);
  place[text.size() + 1] = '"';
}

// Not by GetString(): it makes room for a terminating zero, which can fail between two output
// files.
std::string_view textOf(const JsonBuffer& buffer) {
  return {buffer.stack_.Bottom<char>(), buffer.GetSize()};
}

}  // namespace quenfold

// NOLINTEND(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
