#include <exception>
#include <iostream>
#include <new>

#include "app/database_options.h"
#include "app/files.h"
#include "app/process.h"
#include "database/commands.h"

namespace {

using quenfold::DatabaseOptions;
using quenfold::database::Report;

constexpr int kNothingFound = 0;
constexpr int kFound = 1;
constexpr int kNotDone = 2;

Report run(const DatabaseOptions& options) {
  switch (options.command) {
    case DatabaseOptions::Command::kPack:
      return pack(options.convert);
    case DatabaseOptions::Command::kUnpack:
      return unpack(options.convert);
    case DatabaseOptions::Command::kDiff:
      return diff(options.diff);
    case DatabaseOptions::Command::kShow:
      return show(options.show);
    default:
      return check(options.check);
  }
}

}  // namespace

int main(int argc, char** argv) {
  quenfold::prepareProcess(kNotDone);
  try {
    const quenfold::ParsedCommandLine line = quenfold::parseDatabaseOptions(argc, argv);
    if (!line.run) {
      return line.status;
    }
    const Report report = run(line.options);
    if (!line.options.quiet) {
      quenfold::writeStandardOutput(report.text);
    }
    return report.found ? kFound : kNothingFound;
  } catch (const std::bad_alloc&) {
    std::cerr << "quenfold-db: out of memory" << std::endl;
    return kNotDone;
  } catch (const std::exception& failure) {
    std::cerr << "quenfold-db: " << failure.what() << std::endl;
    return kNotDone;
  }
}
