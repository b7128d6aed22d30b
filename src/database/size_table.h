#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quenfold::database {

struct FileSize {
  std::string name;
  std::uint64_t bytes = 0;
};

/// The bytes of each file, those read and those written in columns of their own, and of the whole.
/// Ends in a line end.
std::string sizeTable(const std::vector<FileSize>& before, const std::vector<FileSize>& after);

/// The size of each of these files of a folder. Throws "error while opening file: <path>".
std::vector<FileSize> sizesIn(const std::string& folder, const std::vector<std::string>& names);

}  // namespace quenfold::database
