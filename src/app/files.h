#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

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

/// A file that is written piece by piece, so that no text has to be in memory as a whole. Opening
/// creates or truncates it. Pieces are kept back until they fill a chunk. Needs no memory unless it
/// fails.
class OutputFile {
 public:
  /// The path must outlive the file. Throws "error while opening file: <path>".
  explicit OutputFile(const std::string& path);
  explicit OutputFile(std::string&& path) = delete;

  /// A file that was not closed stays cut short where the last chunk ended.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Both throw "error while writing file: <path>".
  void append(std::string_view bytes) {
    if (bytes.size() > buffer_.size() - used_) {
      flush();
      if (bytes.size() > buffer_.size()) {
        write(bytes);
        return;
      }
    }
    std::copy(bytes.begin(), bytes.end(), buffer_.data() + used_);
    used_ += bytes.size();
  }
  void append(char byte) {
    if (used_ == buffer_.size()) {
      flush();
    }
    buffer_[used_++] = byte;
  }

  /// Returns only after the system has accepted every byte; nothing may be appended any more.
  /// Throws "error while writing file: <path>".
  void close();

  /// Bytes appended so far.
  [[nodiscard]] std::uint64_t size() const { return written_ + used_; }

 private:
  static constexpr std::size_t kChunk = 65536;

  void flush();
  void write(std::string_view chunk);

  const std::string& path_;
  int descriptor_;
  std::size_t used_ = 0;
  std::uint64_t written_ = 0;
  std::array<char, kChunk> buffer_;  // `used_` bytes of it are kept back
};

/// Writes the bytes as they are, nothing added. Throws
/// "error while writing file: standard output".
void writeStandardOutput(std::string_view text);

/// directory + "/" + name, or the bare name when the directory is empty. A directory that already
/// ends in "/" gives a doubled one, which the system ignores.
std::string joinPath(const std::string& directory, std::string_view name);

}  // namespace quenfold
