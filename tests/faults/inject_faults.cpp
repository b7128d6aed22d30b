// Lets the allocations and system calls of every conversion fail, one by one, and sorts what comes
// of it into a table.
//
//   inject_faults [--every] PROGRAM SHIM DATABASE [CONVERSION]
//
// The database is a folder with the two legacy files, or "large" for one that is made for the run,
// with files of several reads and lists beyond their first index. There of the allocations only
// those of 1 KiB and more and a part of the others fail, unless all are asked for. Status 1 when a
// run ends in anything but the one message, the right bytes or the notice that its fault must lead
// to, or when a kind of fault was never met.

#include <fmt/core.h>

#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "faults/conversion.h"
#include "faults/database.h"
#include "faults/injector.h"
#include "faults/table.h"
#include "support/scratch_path.h"

namespace quenfold::faults {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLarge = "large";

// A prime: what is allocated for a record again and again fails at each of its places, for one
// record or another.
constexpr unsigned long kStride = 23;

struct Arguments {
  bool every = false;
  fs::path program;
  fs::path shim;
  std::string database;
  std::string conversion;  // empty: all
};

Arguments parseArguments(std::vector<std::string> words) {
  Arguments arguments;
  arguments.every = !words.empty() && words.front() == "--every";
  words.erase(words.begin(), words.begin() + (arguments.every ? 1 : 0));
  if (words.size() < 3 || words.size() > 4) {
    throw std::runtime_error("usage: inject_faults [--every] PROGRAM SHIM DATABASE [CONVERSION]");
  }
  arguments.program = fs::absolute(words[0]);
  arguments.shim = fs::absolute(words[1]);
  arguments.database = words[2];
  arguments.conversion = words.size() == 4 ? words[3] : "";
  return arguments;
}

/// Enters a folder with the legacy database in "in" and its packed form in "packed".
void prepareDatabase(const RunPlan& plan, const std::string& database, const fs::path& folder) {
  if (database == kLarge) {
    writeLargeDatabase(folder / "in");
    packDatabase(plan, folder);
    requireSeveralReads(folder);
  } else {
    fs::copy(fs::absolute(database), folder / "in", fs::copy_options::recursive);
    packDatabase(plan, folder);
  }
}

bool inject(const Conversion& conversion, const Injection& injection) {
  Injector injector(conversion, injection);
  injector.failAllocations();
  injector.failSystemCalls();
  injector.disturbSystemCalls();
  injector.fillDisks();
  injector.limitFileSizes();
  injector.breakStandardStreams();
  return injector.sound();
}

bool injectAll(const std::string& wanted, const Injection& injection) {
  printHead();
  bool sound = true;
  bool found = false;
  for (const Conversion& conversion : conversions()) {
    if (wanted.empty() || wanted == conversion.name) {
      found = true;
      sound = inject(conversion, injection) && sound;
    }
  }
  return sound && found;
}

int run(const Arguments& arguments) {
  const test::ScratchPath scratch;
  Injection injection;
  injection.plan.program = arguments.program;
  injection.shim = arguments.shim;
  injection.stride = arguments.database == kLarge && !arguments.every ? kStride : 1;
  prepareDatabase(injection.plan, arguments.database, fs::canonical(scratch.path()));
  const bool sound = injectAll(arguments.conversion, injection);
  fs::current_path("/");
  return sound ? 0 : 1;
}

}  // namespace
}  // namespace quenfold::faults

int main(int argc, char** argv) {
  try {
    return quenfold::faults::run(quenfold::faults::parseArguments({argv + 1, argv + argc}));
  } catch (const std::exception& failure) {
    fmt::print(stderr, "{}\n", failure.what());
    return 1;
  }
}
