#pragma once

// The one place that sets up RapidJSON, before anything else of it is included. Its assertions and
// failed allocations become exceptions, so that no input reaches an abort or a null pointer.

#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "json/plain_run.h"

namespace quenfold {

/// Throws a length error that names the library's condition: what is left of them once types are
/// tested first is a string or list beyond 32 bits of length.
[[noreturn]] void throwJsonAssertion(const char* condition);

}  // namespace quenfold

#define RAPIDJSON_ASSERT(condition) \
  ((condition) ? static_cast<void>(0) : ::quenfold::throwJsonAssertion(#condition))
// Doubles and 64-bit integers live in the library's memory: 32-bit ARM wants them on 8 bytes.
#define RAPIDJSON_ALIGN(size) (((size) + 7U) & ~static_cast<decltype((size) + 7U)>(7U))

#include <rapidjson/document.h>

namespace quenfold {

/// UTF-8 whose strings the library copies by runs, see below.
struct RunEncoding : rapidjson::UTF8<> {};

}  // namespace quenfold

/// The library's point of extension between its loop over a string's escapes and the characters
/// that stand for themselves: it asks for one of them to be copied, and gets the whole run. Without
/// it packing matrices takes 18 % more time.
template <>
struct rapidjson::Transcoder<quenfold::RunEncoding, quenfold::RunEncoding>
    : rapidjson::Transcoder<rapidjson::UTF8<>, rapidjson::UTF8<>> {
  using Transcoder<UTF8<>, UTF8<>>::Transcode;
  using InsituStream = GenericInsituStringStream<quenfold::RunEncoding>;

  static bool Transcode(InsituStream& stream, InsituStream& /*itself*/) {  // NOLINT
    const char* const end = quenfold::plainRunEnd(stream.src_);
    const auto length = static_cast<std::size_t>(end - stream.src_);
    if (stream.dst_ != stream.src_) {
      std::memmove(stream.dst_, stream.src_, length);
    }
    stream.src_ += length;
    stream.dst_ += length;
    return true;
  }
};

namespace quenfold {

/// The library's allocator concept over malloc, throwing std::bad_alloc.
class JsonAllocator {
 public:
  static const bool kNeedFree = true;
  static void* Malloc(std::size_t size);                                         // NOLINT
  static void* Realloc(void* memory, std::size_t oldSize, std::size_t newSize);  // NOLINT
  static void Free(void* memory);                                                // NOLINT
};

using JsonEncoding = rapidjson::UTF8<>;
using JsonPool = rapidjson::MemoryPoolAllocator<JsonAllocator>;
using JsonDocument = rapidjson::GenericDocument<JsonEncoding, JsonPool, JsonAllocator>;
using JsonValue = JsonDocument::ValueType;

/// Parses in place: the document's strings live in `text`, which must stay as it is as long as the
/// document does. A text that is not JSON gives a null document. Nesting is bounded by memory, not
/// by the stack. Throws std::bad_alloc.
JsonDocument parseJson(std::string& text);

/// Where such a text stops being JSON, in bytes from its front; nothing when it is JSON.
std::optional<std::size_t> jsonErrorAt(std::string text);

}  // namespace quenfold
