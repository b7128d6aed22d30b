#include "app/files.h"

#include <sys/stat.h>

#include <array>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <new>

#include "app/error.h"

namespace quenfold {
namespace {

constexpr std::size_t kChunk = 64UL * 1024;

void appendWithoutNewlines(std::string& text, std::string_view chunk) {
  while (true) {
    const std::size_t newline = chunk.find('\n');
    text.append(chunk.substr(0, newline));
    if (newline == std::string_view::npos) {
      return;
    }
    chunk.remove_prefix(newline + 1);
  }
}

/// Appends all that the stream still holds; false when reading failed before its end.
bool readToEnd(std::istream& in, std::string& text) {
  std::array<char, kChunk> chunk;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read
  while (in) {
    in.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
    appendWithoutNewlines(text, {chunk.data(), static_cast<std::size_t>(in.gcount())});
  }
  return !in.bad();
}

/// Makes room for a regular file at once; what has no size (a pipe, a device) grows as it comes.
/// The C library's stat, since the C++ library's has no dates after 2038 on a 32-bit host.
void reserveForFile(std::string& text, const std::string& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return;
  }
  const auto size = static_cast<std::uint64_t>(status.st_size);
  if (size > text.max_size()) {
    throw std::bad_alloc();
  }
  text.reserve(static_cast<std::size_t>(size));
}

}  // namespace

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    throw runtimeError("error while opening file: {}", path);
  }
  std::string text;
  reserveForFile(text, path);
  if (!readToEnd(in, text)) {
    throw runtimeError("error while reading file: {}", path);
  }
  return text;
}

std::string readStandardInput() {
  std::ios::sync_with_stdio(false);
  std::string text;
  if (!readToEnd(std::cin, text)) {
    throw runtimeError("error while reading file: standard input");
  }
  return text;
}

void writeFile(const std::string& path, std::string_view text) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) {
    throw runtimeError("error while opening file: {}", path);
  }
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  out.flush();
  if (out) {
    out.close();
  }
  if (!out) {
    throw runtimeError("error while writing file: {}", path);
  }
}

void writeStandardOutput(std::string_view text) {
  std::cout.write(text.data(), static_cast<std::streamsize>(text.size()));
  std::cout.flush();
  if (!std::cout) {
    throw runtimeError("error while writing file: standard output");
  }
}

std::string joinPath(const std::string& directory, std::string_view name) {
  std::string path = directory;
  if (!path.empty()) {
    path += '/';
  }
  return path.append(name);
}

}  // namespace quenfold
