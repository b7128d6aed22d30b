#include "database/size_table.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <string_view>

#include "app/error.h"
#include "app/files.h"

namespace quenfold::database {
namespace {

constexpr std::string_view kWhole = "all files";

std::uint64_t totalOf(const std::vector<FileSize>& files) {
  std::uint64_t total = 0;
  for (const FileSize& file : files) {
    total += file.bytes;
  }
  return total;
}

std::size_t longestName(const std::vector<FileSize>& files) {
  std::size_t longest = kWhole.size();
  for (const FileSize& file : files) {
    longest = std::max(longest, file.name.size());
  }
  return longest;
}

}  // namespace

std::string sizeTable(const std::vector<FileSize>& before, const std::vector<FileSize>& after) {
  const std::size_t width = std::max(longestName(before), longestName(after));
  std::string text;
  const auto addRow = [&](std::string_view name, std::string_view left, std::string_view right) {
    text += fmt::format("{:<{}}  {:>12}", name, width, left);
    if (!right.empty()) {
      text += fmt::format("  {:>12}", right);
    }
    text += '\n';
  };
  addRow("", "bytes before", "bytes after");
  for (const FileSize& file : before) {
    addRow(file.name, fmt::format("{}", file.bytes), "");
  }
  for (const FileSize& file : after) {
    addRow(file.name, "", fmt::format("{}", file.bytes));
  }
  addRow(kWhole, fmt::format("{}", totalOf(before)), fmt::format("{}", totalOf(after)));
  return text;
}

std::vector<FileSize> sizesIn(const std::string& folder, const std::vector<std::string>& names) {
  std::vector<FileSize> sizes;
  for (const std::string& name : names) {
    const std::string path = joinPath(folder, name);
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
      throw runtimeError("error while opening file: {}", path);
    }
    sizes.push_back({name, static_cast<std::uint64_t>(status.st_size)});
  }
  return sizes;
}

}  // namespace quenfold::database
