#include "app/process.h"

#include <unistd.h>

#include <csignal>
#include <exception>
#include <string_view>

namespace quenfold {
namespace {

int statusThen = 1;

/// A start with so little memory that the C++ runtime finds no room for its reserve, and later none
/// for an exception, ends as any other run that is out of memory.
[[noreturn]] void reportNoMemory() {
  constexpr std::string_view kMessage = "std::bad_alloc\n";
  // Nobody is left to tell whether it could be written.
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, kMessage.data(), kMessage.size());
  _exit(statusThen);
}

}  // namespace

void prepareProcess(int statusWithoutMemory) {
  statusThen = statusWithoutMemory;
  std::set_terminate(reportNoMemory);
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

}  // namespace quenfold
