#include <csignal>
#include <exception>
#include <iostream>
#include <optional>

#include "app/driver.h"
#include "app/options.h"

namespace {

/// A write beyond the file size limit, or into a pipe that nobody reads, then fails like any other
/// and ends in its message, instead of in a signal between two files.
void takeWriteFailuresAsErrors() {
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

}  // namespace

int main(int argc, char** argv) {
  takeWriteFailuresAsErrors();
  try {
    const std::optional<quenfold::Options> options = quenfold::parseOptions(argc, argv);
    if (options) {
      quenfold::run(*options);
    } else {
      quenfold::printUsage();
    }
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << std::endl;
    return 1;
  }
  return 0;
}
