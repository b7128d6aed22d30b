#pragma once

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace quenfold::test {

/// A folder of its own, removed with all that is in it at the end.
class ScratchPath {
 public:
  ScratchPath() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quenfold-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::system_error(errno, std::generic_category(), "mkdtemp");
    }
    path_ = pattern;
  }
  ~ScratchPath() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchPath(const ScratchPath&) = delete;
  ScratchPath& operator=(const ScratchPath&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace quenfold::test
