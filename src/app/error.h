#pragma once

#include <fmt/core.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace quenfold {

/// The one way to report a failure: `throw runtimeError("{} not found", name);`.
/// The driver prints the message and ends the run with status 1.
template <typename... Args>
std::runtime_error runtimeError(fmt::format_string<Args...> message, Args&&... args) {
  return std::runtime_error(fmt::format(message, std::forward<Args>(args)...));
}

/// For a system call that has just failed: the message, ": " and the reason, which is errno's.
template <typename... Args>
std::system_error systemError(fmt::format_string<Args...> message, Args&&... args) {
  const int reason = errno;  // before memory is asked for
  return {reason, std::generic_category(), fmt::format(message, std::forward<Args>(args)...)};
}

/// For what is too large for the program, whatever it says: `throw lengthError("too many ports");`.
/// It ends the run even where a runtime error is only reported: half of it must not be packed as if
/// it were the whole.
template <typename... Args>
std::length_error lengthError(fmt::format_string<Args...> message, Args&&... args) {
  return std::length_error(fmt::format(message, std::forward<Args>(args)...));
}

}  // namespace quenfold
