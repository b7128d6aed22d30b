// Breaks the replacement of a folder's files in every way that is known beforehand, and looks at
// what is left: it must be all the old files or all the new ones, and nothing beside them.
//
//   break_replacements EXPERIMENT SHIM BEFORE FOLDER REPLACE LOOK
//
// The experiments are those of experiments.h: kill, kill-next, fail, fail-look and cut-power.
// BEFORE is a folder that is copied; in the copy the commands run. FOLDER is the one in it whose
// files are replaced, and may be missing. REPLACE and LOOK are commands, words between blanks, the
// program by its whole path: one replaces files of the folder, the other does no more than to hold
// the folder, and ends with status 0 or 1. The status is 1 at the first run that does not end as it
// must.

#include <fmt/core.h>

#include <exception>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/text.h"
#include "kills/experiments.h"
#include "support/scratch_path.h"

namespace quenfold::kills {
namespace {

namespace fs = std::filesystem;

using Experiment = void (*)(const Subject&, const FolderState&);

Experiment experimentOf(const std::string& name) {
  static const std::map<std::string, Experiment> all = {{"kill", killRuns},
                                                        {"kill-next", killNextRuns},
                                                        {"fail", failCalls},
                                                        {"fail-look", failLooks},
                                                        {"cut-power", cutPower}};
  return all.at(name);
}

int run(const std::vector<std::string>& words) {
  if (words.size() != 6) {
    throw std::runtime_error(
        "usage: break_replacements EXPERIMENT SHIM BEFORE FOLDER REPLACE LOOK");
  }
  const Experiment experiment = experimentOf(words[0]);
  const Subject subject = {fs::absolute(words[1]), words[3], split(words[4], ' '),
                           split(words[5], ' ')};
  const fs::path before = fs::absolute(words[2]);
  if (!fs::exists(subject.shim)) {
    throw std::runtime_error("no library to preload: " + subject.shim);
  }
  const test::ScratchPath scratch;
  fs::copy(before, scratch.path(), fs::copy_options::recursive);
  fs::current_path(fs::canonical(scratch.path()));
  experiment(subject, stateOf(subject.folder));
  fs::current_path("/");
  return 0;
}

}  // namespace
}  // namespace quenfold::kills

int main(int argc, char** argv) {
  try {
    return quenfold::kills::run({argv + 1, argv + argc});
  } catch (const std::exception& failure) {
    fmt::print(stderr, "{}\n", failure.what());
    return 1;
  }
}
