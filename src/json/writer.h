#pragma once

// RapidJSON's two writers: the packed sections are written prettily into memory, "matrices.json"
// compactly into its file.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "app/files.h"
#include "json/document.h"
#include "json/plain_run.h"

// Only behind the library's setup in json/document.h.
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace quenfold {

/// What the pretty writer writes into; it grows without copying where the system can move pages. A
/// type of its own, so that the library does not reserve six bytes for each of a text, a number
/// that overflows for long ones.
struct JsonBuffer : rapidjson::GenericStringBuffer<JsonEncoding, JsonAllocator> {};

/// A file as the stream of a writer, by the library's concept.
class JsonFileStream {
 public:
  using Ch = char;  // NOLINT(readability-identifier-naming)

  void writeTo(OutputFile& file) { file_ = &file; }
  void Put(char character) { file_->append(character); }  // NOLINT(readability-identifier-naming)
  void Flush() {}                                         // NOLINT(readability-identifier-naming)
  void append(std::string_view characters) { file_->append(characters); }

 private:
  OutputFile* file_ = nullptr;
};

inline void appendRun(JsonFileStream& stream, std::string_view run) { stream.append(run); }
inline void appendRun(JsonBuffer& buffer, std::string_view run) {
  std::copy(run.begin(), run.end(), buffer.Push(run.size()));
}

template <typename Stream>
using JsonWriter = rapidjson::Writer<Stream, JsonEncoding, JsonEncoding, JsonAllocator>;

/// Writes the characters up to the first that needs an escape; whether there is one.
template <typename Stream>
bool writePlainRun(Stream& stream, rapidjson::GenericStringStream<JsonEncoding>& text,
                   std::size_t length) {
  const std::string_view rest(text.src_, length - text.Tell());
  const std::size_t run = plainRunLength(rest);
  appendRun(stream, rest.substr(0, run));
  text.src_ += run;
  return run < rest.size();
}

}  // namespace quenfold

// The library's point of extension for characters that need no escape: a run goes in at once, for
// both writers. Without it unpacking matrices takes 18 % more time.
// NOLINTBEGIN(readability-identifier-naming)
template <>
inline bool quenfold::JsonWriter<quenfold::JsonFileStream>::ScanWriteUnescapedString(
    rapidjson::GenericStringStream<quenfold::JsonEncoding>& text, std::size_t length) {
  return quenfold::writePlainRun(*os_, text, length);
}
template <>
inline bool quenfold::JsonWriter<quenfold::JsonBuffer>::ScanWriteUnescapedString(
    rapidjson::GenericStringStream<quenfold::JsonEncoding>& text, std::size_t length) {
  return quenfold::writePlainRun(*os_, text, length);
}
// NOLINTEND(readability-identifier-naming)

namespace quenfold {

/// Four blanks a level, one member a line, every array on one line.
class PrettyJsonWriter
    : public rapidjson::PrettyWriter<JsonBuffer, JsonEncoding, JsonEncoding, JsonAllocator> {
 public:
  explicit PrettyJsonWriter(JsonBuffer& buffer) : PrettyWriter(buffer) {
    SetFormatOptions(rapidjson::kFormatSingleLineArray);
  }
};

/// What was written so far; valid until more is written. Allocates nothing: the library's own
/// GetString() makes room for a terminating zero, which could fail between two output files.
inline std::string_view textOf(const JsonBuffer& buffer) {
  return {buffer.stack_.Bottom<char>(), buffer.GetSize()};
}

/// No white space, onto files. Allocates when it is constructed and no more for up to eight levels
/// of nesting, so that no file is lost to memory that runs out.
class CompactJsonWriter : public JsonWriter<JsonFileStream> {
 public:
  CompactJsonWriter() { level_stack_.Reserve<Level>(8); }

  /// What is written from now on is a text of its own. The file must outlive its writing.
  void startText(OutputFile& file) {
    stream_.writeTo(file);
    Reset(stream_);
  }

 private:
  JsonFileStream stream_;
};

/// The length of a text for the library, which counts in 32 bits. Throws what its own checks throw.
inline rapidjson::SizeType jsonLength(std::uint64_t bytes) {
  RAPIDJSON_ASSERT(bytes <= std::numeric_limits<rapidjson::SizeType>::max());
  return static_cast<rapidjson::SizeType>(bytes);
}

template <typename Writer>
void writeKey(Writer& writer, std::string_view key) {
  writer.Key(key.data(), jsonLength(key.size()));
}
template <typename Writer>
void writeString(Writer& writer, std::string_view text) {
  writer.String(text.data(), jsonLength(text.size()));
}

}  // namespace quenfold
