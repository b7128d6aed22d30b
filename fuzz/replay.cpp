// Gives every file named, and every file of the folders named, to a fuzz target once. What a
// fuzzer found stays tested in builds without one.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "target.h"

namespace {

using Paths = std::vector<std::filesystem::path>;

Paths inputsOf(const Paths& arguments) {
  Paths inputs;
  for (const std::filesystem::path& argument : arguments) {
    if (std::filesystem::is_directory(argument)) {
      std::copy(std::filesystem::directory_iterator(argument), {}, std::back_inserter(inputs));
    } else {
      inputs.push_back(argument);
    }
  }
  std::sort(inputs.begin(), inputs.end());
  return inputs;
}

/// The input's own memory, without room at its end: a sanitizer sees a read beyond it.
void replay(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw std::runtime_error("cannot be opened");
  }
  std::ostringstream content;
  content << file.rdbuf();
  const std::string text = content.str();
  const std::vector<std::uint8_t> bytes(text.begin(), text.end());
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  std::filesystem::path path;
  try {
    const Paths inputs = inputsOf(Paths(argv + 1, argv + argc));
    for (const std::filesystem::path& input : inputs) {
      path = input;
      replay(input);
    }
    std::cout << inputs.size() << " inputs\n";
    return inputs.empty() ? 1 : 0;
  } catch (const std::exception& failure) {
    std::cerr << path.string() << ": " << failure.what() << '\n';
    return 1;
  }
}
