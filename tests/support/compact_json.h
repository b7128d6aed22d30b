#pragma once

#include <string>

#include "json/writer.h"

namespace quenfold::test {

/// The document or value as the library writes it without any white space.
inline std::string compactJson(const JsonValue& value) {
  JsonBuffer buffer;
  rapidjson::Writer<JsonBuffer, JsonEncoding, JsonEncoding, JsonAllocator> writer(buffer);
  value.Accept(writer);
  return std::string(textOf(buffer));
}

}  // namespace quenfold::test
