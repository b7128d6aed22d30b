// What the kills are tried on: a run that replaces files of a folder, and one that only reads it.
//
//   replace_files replace FOLDER
//   replace_files look FOLDER
//
// The first puts new texts into "a.json" and "b.json" and removes "c.json". Status 2, and why, when
// that could not be done.

#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "app/files.h"
#include "database/staging.h"

namespace {

using quenfold::database::HeldFolder;
using quenfold::database::Replacement;

bool isKnown(std::string_view name) {
  return name == "a.json" || name == "b.json" || name == "c.json";
}

void replace(const std::string& folder) {
  const HeldFolder held = HeldFolder::forWriting(folder, isKnown);
  Replacement replacement(held);
  quenfold::writeFile(replacement.stage("a.json"), "the new a");
  quenfold::writeFile(replacement.stage("b.json"), "the new b");
  replacement.remove("c.json");
  replacement.commit();
}

int run(const std::vector<std::string>& words) {
  if (words.size() != 2) {
    std::fputs("usage: replace_files replace|look FOLDER\n", stderr);
    return 2;
  }
  if (words[0] == "replace") {
    replace(words[1]);
  } else {
    HeldFolder::forReading(words[1], isKnown);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run({argv + 1, argv + argc});
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 2;
  }
}
