#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace quenfold::bench {

/// Creates or truncates the file with what `write` puts into the stream that it is given. Throws a
/// runtime error that names the path.
template <typename Write>
void writeDocument(const std::filesystem::path& path, Write write) {
  std::ofstream file(path, std::ios::binary);
  write(file);
  file.close();
  if (!file) {
    throw std::runtime_error("error while writing file: " + path.string());
  }
}

}  // namespace quenfold::bench
