#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/text_stream.h"

namespace quenfold {

/// The text of a whole file without its newline characters; carriage returns and all other bytes
/// stay. Throws "error while opening file: <path>" or, when the file opens but cannot be read (a
/// directory, a failing disk), "error while reading file: <path>"; for a file of more than
/// `kMaxTextBytes` a length error "file too large: <path>"; std::bad_alloc.
std::string readFile(const std::string& path);

/// The text of standard input up to its end, without newline characters. Throws
/// "error while reading file: standard input", and as `readFile` does.
std::string readStandardInput();

/// Creates or truncates the file and writes the bytes as they are. Returns only after the system
/// has accepted every byte. Needs no memory unless it fails. Throws
/// "error while opening file: <path>" or "error while writing file: <path>".
void writeFile(const std::string& path, std::string_view text);

/// The same for a text that comes into being while it is written: `produce` appends it, and gets
/// the context back. Returns its length. Throws what `produce` throws as well, the file then cut
/// short.
std::uint64_t streamFile(const std::string& path,
                         void (*produce)(TextStream& out, const void* context),
                         const void* context);

/// The same with a closure, whatever it holds: it stays where it is.
template <typename Produce>
std::uint64_t streamFile(const std::string& path, const Produce& produce) {
  const auto call = [](TextStream& out, const void* closure) {
    (*static_cast<const Produce*>(closure))(out);
  };
  return streamFile(path, call, &produce);
}

/// Writes the bytes as they are, nothing added. Throws
/// "error while writing file: standard output".
void writeStandardOutput(std::string_view text);

/// directory + "/" + name, or the bare name when the directory is empty. A directory that already
/// ends in "/" gives a doubled one, which the system ignores.
std::string joinPath(const std::string& directory, std::string_view name);

}  // namespace quenfold
