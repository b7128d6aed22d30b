#include "json/document.h"

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

/// The value of a JSON number: an integer when it is written as one that fits 64 bits.
JsonValue numberOf(std::string_view digits) {
  if (std::int64_t whole = 0; isWhole(digits, whole)) {
    return JsonValue(whole);
  }
  if (std::uint64_t whole = 0; isWhole(digits, whole)) {
    return JsonValue(whole);
  }
  return JsonValue(std::strtod(std::string(digits).c_str(), nullptr));
}

/// A document that takes its numbers from the parser as they are written: the library's own
/// conversion adds up exponents without a check and then reads outside its table of powers.
class DocumentBuilder : public JsonDocument {
 public:
  /// Fills itself from the padded text; stays null when that is not JSON. Gives where it is not.
  std::optional<std::size_t> build(char* text) {
    constexpr unsigned kFlags = rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag |
                                rapidjson::kParseNumbersAsStringsFlag;
    std::optional<std::size_t> errorAt;
    const auto parse = [&](const JsonDocument& /*itself*/) {
      rapidjson::GenericInsituStringStream<RunEncoding> stream(text);
      rapidjson::GenericReader<RunEncoding, RunEncoding, JsonAllocator> reader;
      const rapidjson::ParseResult result = reader.Parse<kFlags>(stream, *this);
      if (result.IsError()) {
        errorAt = result.Offset();
      }
      return !result.IsError();
    };
    Populate(parse);
    return errorAt;
  }

  bool RawNumber(const char* digits, rapidjson::SizeType length, bool /*copy*/) {  // NOLINT
    return numberOf({digits, length}).Accept(*this);
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

JsonDocument parseJson(std::string& text) {
  const std::size_t size = text.size();
  text.resize(size + kScanPadding);
  DocumentBuilder builder;
  builder.build(text.data());
  text.resize(size);
  return {std::move(builder)};
}

std::optional<std::size_t> jsonErrorAt(std::string text) {
  text.resize(text.size() + kScanPadding);
  DocumentBuilder builder;
  return builder.build(text.data());
}

}  // namespace quenfold

// NOLINTEND(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
