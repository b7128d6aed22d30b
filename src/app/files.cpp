#include "app/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "app/error.h"
#include "app/limits.h"
#include "app/system_call.h"

// The system's own calls: they tell why they failed, and nothing is allocated once a file is open
// for writing, so running out of memory cannot cost the operator what the file held.

namespace quenfold {
namespace {

constexpr std::size_t kReadChunk = 65536;
// Left behind a text, so that whoever pads it need not move it.
constexpr std::size_t kSpareRoom = 16;
constexpr std::string_view kStandardInput = "standard input";
constexpr std::string_view kStandardOutput = "standard output";

/// A system without memory says nothing about the file. Where a file's fault is no end of the run,
/// this one is.
void throwIfOutOfMemory() {
  if (errno == ENOMEM) {
    throw std::bad_alloc();
  }
}

/// The descriptor of an opened file.
int openFile(const std::string& path, int flags) {
  const int descriptor = uninterrupted([&] {
    constexpr mode_t kEverybody = 0666;                        // less the umask
    return open(path.c_str(), flags | O_CLOEXEC, kEverybody);  // NOLINT(*-vararg)
  });
  if (descriptor == kFailed) {
    throwIfOutOfMemory();
    throw runtimeError("error while opening file: {}", path);
  }
  return descriptor;
}

void appendWithoutNewlines(std::string& text, std::string_view chunk) {
  while (true) {
    const std::size_t newline = chunk.find('\n');
    text.append(chunk.substr(0, newline));
    if (newline == std::string_view::npos) {
      return;
    }
    chunk.remove_prefix(newline + 1);
  }
}

/// Appends all that the file still holds. `name` is for messages.
void readToEnd(int descriptor, std::string& text, std::string_view name) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): filled by read
  std::array<char, kReadChunk> chunk;
  while (true) {
    const ssize_t count =
        uninterrupted([&] { return read(descriptor, chunk.data(), chunk.size()); });
    if (count < 0) {
      throwIfOutOfMemory();
      throw runtimeError("error while reading file: {}", name);
    }
    if (count == 0) {
      return;
    }
    appendWithoutNewlines(text, {chunk.data(), static_cast<std::size_t>(count)});
    requireSize(text.size(), name);
  }
}

/// Makes room for a regular file at once; what has no size (a pipe, a device) grows as it comes.
void reserveForFile(int descriptor, std::string& text, const std::string& path) {
  struct stat status = {};
  if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
    return;
  }
  const auto size = static_cast<std::uint64_t>(status.st_size);
  requireSize(size, path);
  const std::uint64_t room = size + kSpareRoom;
  if (room > text.max_size()) {
    throw std::bad_alloc();
  }
  text.reserve(static_cast<std::size_t>(room));
}

/// Whether the system accepted every byte, however small its bites.
bool writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count =
        uninterrupted([&] { return write(descriptor, text.data(), text.size()); });
    if (count <= 0) {
      return false;
    }
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

/// `name` is for the message.
void requireWritten(bool written, std::string_view name) {
  if (!written) {
    throw runtimeError("error while writing file: {}", name);
  }
}

}  // namespace

std::string readFile(const std::string& path) {
  const Descriptor in(openFile(path, O_RDONLY));
  std::string text;
  reserveForFile(in.get(), text, path);
  readToEnd(in.get(), text, path);
  return text;
}

std::string readStandardInput() {
  std::string text;
  readToEnd(STDIN_FILENO, text, kStandardInput);
  return text;
}

void writeFile(const std::string& path, std::string_view text) {
  OutputFile out(path);
  out.append(text);
  out.close();
}

// The buffer is filled as pieces come.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
OutputFile::OutputFile(const std::string& path)
    : path_(path), descriptor_(openFile(path, O_WRONLY | O_CREAT | O_TRUNC)) {}

OutputFile::~OutputFile() {
  if (descriptor_ != kFailed) {
    ::close(descriptor_);
  }
}

void OutputFile::close() {
  flush();
  requireWritten(::close(std::exchange(descriptor_, kFailed)) == 0, path_);
}

void OutputFile::flush() { write({buffer_.data(), std::exchange(used_, 0)}); }

void OutputFile::write(std::string_view chunk) {
  requireWritten(writeAll(descriptor_, chunk), path_);
  written_ += chunk.size();
}

void writeStandardOutput(std::string_view text) {
  requireWritten(writeAll(STDOUT_FILENO, text), kStandardOutput);
}

std::string joinPath(const std::string& directory, std::string_view name) {
  std::string path = directory;
  if (!path.empty()) {
    path += '/';
  }
  return path.append(name);
}

}  // namespace quenfold
