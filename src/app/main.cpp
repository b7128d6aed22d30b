#include <unistd.h>

#include <csignal>
#include <exception>
#include <iostream>
#include <optional>
#include <string_view>

#include "app/driver.h"
#include "app/options.h"

namespace {

/// A write beyond the file size limit, or into a pipe that nobody reads, then fails like any other
/// and ends in its message, instead of in a signal between two files.
void takeWriteFailuresAsErrors() {
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

/// A start with so little memory that the C++ runtime finds no room for its reserve, and later none
/// for an exception, ends as any other run that is out of memory.
[[noreturn]] void reportNoMemory() {
  constexpr std::string_view kMessage = "std::bad_alloc\n";
  // Nobody is left to tell whether it could be written.
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, kMessage.data(), kMessage.size());
  _exit(1);
}

}  // namespace

int main(int argc, char** argv) {
  std::set_terminate(reportNoMemory);
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
