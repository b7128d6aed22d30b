#include "json/document.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "app/error.h"

// The library asks for memory and frees it as C does.
// NOLINTBEGIN(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)

namespace quenfold {

void throwJsonAssertion(const char* condition) {
  throw runtimeError("JSON library condition failed: {}", condition);
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
  JsonDocument document;
  document.ParseInsitu<rapidjson::kParseIterativeFlag>(text.data());
  return document;
}

std::string_view textOf(const JsonBuffer& buffer) { return {buffer.GetString(), buffer.GetSize()}; }

void append(JsonBuffer& buffer, std::string_view bytes) {
  std::copy(bytes.begin(), bytes.end(), buffer.Push(bytes.size()));
}

}  // namespace quenfold

// NOLINTEND(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
