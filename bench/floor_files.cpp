#include "floor_files.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace quenfold::floor {

std::string readBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text(std::filesystem::file_size(path), '\0');
  if (!file.read(text.data(), static_cast<std::streamsize>(text.size()))) {
    throw std::runtime_error("error while reading file: " + path);
  }
  return text;
}

void writeBytes(const std::string& path, std::string_view text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  file.close();
  if (!file) {
    throw std::runtime_error("error while writing file: " + path);
  }
}

}  // namespace quenfold::floor
