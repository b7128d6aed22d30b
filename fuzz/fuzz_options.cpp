// The input is the arguments of a command line, cut at blanks and line ends.

#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "app/options.h"
#include "app/stage_timer.h"
#include "app/text.h"
#include "target.h"

namespace quenfold {
namespace {

std::optional<Options> parse(std::vector<char*>& arguments) {
  opterr = 0;  // getopt's own messages would go past the discarded standard error
  optind = 0;  // makes the C library start anew
  verbose = false;
  return parseOptions(static_cast<int>(arguments.size()) - 1, arguments.data());
}

void requireSame(const Options& left, const Options& right) {
  const bool same = left.sourceDir == right.sourceDir && left.outputDir == right.outputDir &&
                    left.function == right.function && left.inputFiles == right.inputFiles &&
                    left.outputFiles == right.outputFiles && left.pack == right.pack;
  fuzz::require(same, "the arguments in getopt's order mean the same");
}

}  // namespace
}  // namespace quenfold

namespace quenfold::fuzz {
namespace {

void fuzzOptions(std::string_view input) {
  std::string line(input);
  std::replace(line.begin(), line.end(), '\n', ' ');
  std::vector<std::string> words = split(line, ' ');
  words.insert(words.begin(), "quenfold");
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  const std::optional<Options> options = parse(arguments);
  if (options) {
    const std::optional<Options> again = parse(arguments);
    require(again.has_value(), "accepted arguments are accepted in getopt's order");
    requireSame(*options, *again);
  }
}

const Target kOptions("options", fuzzOptions);

}  // namespace
}  // namespace quenfold::fuzz
