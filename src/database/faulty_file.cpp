#include "database/faulty_file.h"

#include <fstream>
#include <optional>
#include <utility>

#include "app/error.h"
#include "json/document.h"

namespace quenfold::database {
namespace {

struct Location {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// Of the byte at that offset, for which line ends do not count.
Location locate(const std::string& path, std::size_t offset) {
  std::ifstream file(path, std::ios::binary);
  Location location;
  for (char byte = 0; file.get(byte);) {
    if (byte == '\n') {
      ++location.line;
      location.column = 1;
    } else if (offset-- == 0) {
      break;
    } else {
      ++location.column;
    }
  }
  return location;
}

}  // namespace

std::runtime_error noJson(const std::string& path, std::size_t offset) {
  const auto [line, column] = locate(path, offset);
  return runtimeError("{}:{}:{}: no JSON", path, line, column);
}

std::runtime_error faultOf(const std::string& path, std::string text,
                           const std::runtime_error& failure) {
  const std::optional<std::size_t> error = jsonErrorAt(std::move(text));
  return error ? noJson(path, *error) : runtimeError("{}: {}", path, failure.what());
}

}  // namespace quenfold::database
