#include "faults/program_run.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <utility>

#include "faults/fault_plan.h"

namespace quenfold::faults {
namespace {

constexpr unsigned kLongestRun = 20;  // seconds; a run takes milliseconds

[[noreturn]] void throwErrno(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

/// Both ends of a pipe, closed at the end. What a run prints fits into it: that is read later.
class Pipe {
 public:
  Pipe() {
    constexpr int kRoom = 1 << 20;  // the most that anybody may ask for
    // NOLINTNEXTLINE(*-vararg)
    if (pipe2(ends_.data(), O_CLOEXEC) != 0 || fcntl(ends_[1], F_SETPIPE_SZ, kRoom) < 0) {
      throwErrno("pipe2");
    }
  }
  ~Pipe() {
    closeEnd(0);
    closeEnd(1);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  void closeEnd(std::size_t end) {
    if (ends_.at(end) != -1) {
      close(ends_.at(end));
      ends_.at(end) = -1;
    }
  }
  [[nodiscard]] int writeEnd() const { return ends_[1]; }

  /// All that was written; to be called once every writer is gone.
  std::string drain() {
    closeEnd(1);
    std::string text;
    std::array<char, 4096> chunk{};
    for (ssize_t count = 0; (count = read(ends_[0], chunk.data(), chunk.size())) > 0;) {
      text.append(chunk.data(), static_cast<std::size_t>(count));
    }
    return text;
  }

 private:
  std::array<int, 2> ends_{};
};

struct Pipes {
  Pipe out;
  Pipe err;
  Pipe mark;
};

void place(int descriptor, int target) {
  if (descriptor == -1 || dup2(descriptor, target) == -1) {
    _exit(127);
  }
}

int opened(const char* path, int flags) {
  return open(path, flags | O_CLOEXEC);  // NOLINT(*-vararg)
}

void connectStreams(const RunPlan& plan, Pipes& pipes) {
  place(pipes.err.writeEnd(), STDERR_FILENO);
  place(pipes.mark.writeEnd(), kMarkDescriptor);
  if (plan.standardInput.empty()) {
    close(STDIN_FILENO);
  } else {
    place(opened(plan.standardInput.c_str(), O_RDONLY), STDIN_FILENO);
  }
  switch (plan.standardOutput) {
    case StandardOutput::kClosed:
      close(STDOUT_FILENO);
      break;
    case StandardOutput::kFullDisk:
      place(opened("/dev/full", O_WRONLY), STDOUT_FILENO);
      break;
    case StandardOutput::kPipeWithoutReader:
    case StandardOutput::kCaptured:
      place(pipes.out.writeEnd(), STDOUT_FILENO);
      break;
  }
}

void setLimits(const RunPlan& plan) {
  const rlimit noCore = {0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  if (plan.fileSizeLimit) {
    const rlimit limit = {*plan.fileSizeLimit, *plan.fileSizeLimit};
    setrlimit(RLIMIT_FSIZE, &limit);
    setenv("LLVM_PROFILE_FILE", "/dev/null", 1);  // the limit would break a coverage build's file
  }
  alarm(kLongestRun);
}

[[noreturn]] void becomeProgram(const RunPlan& plan, Pipes& pipes) {
  connectStreams(plan, pipes);
  setLimits(plan);
  if (!plan.shim.empty()) {
    setenv("LD_PRELOAD", plan.shim.c_str(), 1);
    setenv(kFaultVariable, plan.fault.c_str(), 1);
  }
  std::vector<char*> arguments = {const_cast<char*>(plan.program.c_str())};
  for (const std::string& argument : plan.arguments) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  execv(plan.program.c_str(), arguments.data());
  _exit(127);
}

/// The lines of a text whose lines all end.
std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> relativePaths(std::vector<std::string> paths) {
  const std::string folder = std::filesystem::current_path().string() + "/";
  for (std::string& path : paths) {
    if (path.compare(0, folder.size(), folder) == 0) {
      path.erase(0, folder.size());
    }
  }
  return paths;
}

}  // namespace

RunResult runProgram(const RunPlan& plan) {
  Pipes pipes;
  if (plan.standardOutput == StandardOutput::kPipeWithoutReader) {
    pipes.out.closeEnd(0);
  }
  const pid_t child = fork();
  if (child == -1) {
    throwErrno("fork");
  }
  if (child == 0) {
    becomeProgram(plan, pipes);
  }
  int ending = 0;
  if (waitpid(child, &ending, 0) != child) {
    throwErrno("waitpid");
  }
  RunResult result;
  if (WIFEXITED(ending)) {
    result.status = WEXITSTATUS(ending);
  } else {
    result.signal = WTERMSIG(ending);
  }
  result.strikes = relativePaths(linesOf(pipes.mark.drain()));
  result.out = pipes.out.drain();
  result.err = pipes.err.drain();
  return result;
}

}  // namespace quenfold::faults
