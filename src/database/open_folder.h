#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quenfold::database {

/// A folder that is open. What is done in it by name is done in this very folder, whatever its path
/// leads to meanwhile. Here and in folder_files.h a failure of the system is a std::system_error,
/// "<what failed>: <path>: <reason>".
class OpenFolder {
 public:
  /// The path may be a symbolic link. Throws "error while opening folder".
  explicit OpenFolder(std::string path);
  ~OpenFolder();
  OpenFolder(OpenFolder&& other) noexcept;
  OpenFolder& operator=(OpenFolder&&) = delete;
  OpenFolder(const OpenFolder&) = delete;
  OpenFolder& operator=(const OpenFolder&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string pathOf(std::string_view name) const;
  [[nodiscard]] int descriptor() const { return descriptor_; }

 private:
  std::string path_;
  int descriptor_;
};

/// Creates the folder unless something bears its name; whether it did. Throws "error while creating
/// folder".
bool createFolder(const std::string& path);

/// Whether the path leads to this very folder.
bool isAt(const OpenFolder& folder, const std::string& path);

enum class Lock { kShared, kExclusive };

/// Takes the lock, in place of the one held. False when another run's lock forbids it; then none is
/// held. It ends with the folder, and with the process however that ends. Throws "error while
/// locking folder".
bool tryLock(const OpenFolder& folder, Lock lock);

/// With "." and "..", in no order. Throws "error while reading folder".
std::vector<std::string> namesIn(const OpenFolder& folder);

/// The names in it are on the disk afterwards as they are now. Throws "error while writing folder".
void syncNames(const OpenFolder& folder);

/// The same of the names beside the folder, its own among them, unless the parent may not be read.
void syncNamesBeside(const OpenFolder& folder);

}  // namespace quenfold::database
