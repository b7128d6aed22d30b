#include "input_files.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "app/files.h"
#include "support/scratch_path.h"
#include "target.h"

namespace quenfold::fuzz {
namespace {

constexpr std::string_view kSeparator = "--- ";

/// The position of the first line from `start`, itself the start of a line, that is a separator.
std::size_t findSeparator(std::string_view input, std::size_t start) {
  while (start < input.size() && input.substr(start, kSeparator.size()) != kSeparator) {
    const std::size_t lineEnd = input.find('\n', start);
    start = lineEnd == std::string_view::npos ? input.size() : lineEnd + 1;
  }
  return std::min(start, input.size());
}

}  // namespace

std::vector<InputFile> splitInput(std::string_view input) {
  std::vector<InputFile> files;
  input.remove_prefix(findSeparator(input, 0));
  while (!input.empty()) {
    input.remove_prefix(kSeparator.size());
    const std::size_t nameEnd = std::min(input.find('\n'), input.size());
    const std::string_view name = input.substr(0, nameEnd);
    input.remove_prefix(std::min(nameEnd + 1, input.size()));
    const std::size_t next = findSeparator(input, 0);
    const bool hasLineEnd = next > 0 && next < input.size();
    files.push_back({name, input.substr(0, hasLineEnd ? next - 1 : next)});
    input.remove_prefix(next);
  }
  return files;
}

const InputFile* findFile(const std::vector<InputFile>& files, std::string_view name) {
  const auto file = std::find_if(files.begin(), files.end(),
                                 [name](const InputFile& each) { return each.name == name; });
  return file == files.end() ? nullptr : &*file;
}

const std::string& workFolder() {
  // Without it every conversion would end in a proper error, and nothing would be tried.
  static const auto folder = mustSucceed([] { return std::make_unique<test::ScratchPath>(); });
  static const std::string path = folder->path().string();
  return path;
}

void placeFiles(const std::vector<InputFile>& files, const std::vector<std::string_view>& names) {
  for (const std::string_view name : names) {
    const std::string path = joinPath(workFolder(), name);
    const InputFile* const file = findFile(files, name);
    if (file == nullptr) {
      std::filesystem::remove(path);
    } else {
      mustSucceed([&] { writeFile(path, file->text); });
    }
  }
}

std::string bytesOf(std::string_view name) {
  std::ifstream in(joinPath(workFolder(), name), std::ios::binary);
  require(in.is_open(), "the conversion wrote its file");
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

}  // namespace quenfold::fuzz
