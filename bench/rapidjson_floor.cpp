// What RapidJSON alone takes: the library as it comes, with its own allocators, and nothing of the
// program. Built a second time with the library's SSE4.2 code.
//
//   rapidjson_floor copying FILE      read, parse
//   rapidjson_floor in-situ FILE      read, parse in place
//   rapidjson_floor write BYTES FILE  build the names of legacy ports, write them as
//   "matrices.json"
//                                     of about that size
//
// The bytes worked on go to standard output.

#include <fmt/format.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "floor_files.h"
#include "floor_program.h"

namespace {

using quenfold::floor::writeBytes;
using TextWriter = rapidjson::Writer<rapidjson::StringBuffer>;

std::size_t parse(std::string text, bool inPlace) {
  const std::size_t bytes = text.size();
  rapidjson::Document document;
  if (inPlace) {
    document.ParseInsitu(text.data());
  } else {
    document.Parse(text.c_str(), text.size());
  }
  if (document.HasParseError()) {
    throw std::runtime_error("not JSON");
  }
  return bytes;
}

void writePort(TextWriter& writer, const std::string& name) {
  const auto length = static_cast<rapidjson::SizeType>(name.size());
  writer.StartObject();
  writer.Key("port");
  writer.String(name.data(), length);
  writer.Key("label");
  writer.String(name.data(), length);
  writer.EndObject();
}

/// Made beforehand: the library is measured, not the making of names.
std::vector<std::string> portNames() {
  constexpr int kNames = 4096;
  std::vector<std::string> names;
  names.reserve(kNames);
  for (int port = 0; port < kNames; ++port) {
    names.push_back(fmt::format("Studio12 Broadcast Hall.slot{}.in[{}].audio.ch{}", port / 512,
                                port / 8 % 64, port % 8));
  }
  return names;
}

void writePorts(TextWriter& writer, const rapidjson::StringBuffer& text, std::size_t bytes) {
  const std::vector<std::string> names = portNames();
  writer.StartArray();
  for (std::size_t port = 0; text.GetSize() < bytes; ++port) {
    writePort(writer, names[port % names.size()]);
  }
  writer.EndArray();
}

std::size_t write(std::size_t bytes, const std::string& path) {
  rapidjson::StringBuffer text;
  TextWriter writer(text);
  writer.StartObject();
  writer.Key("ports");
  writePorts(writer, text, bytes);
  writer.EndObject();
  writeBytes(path, {text.GetString(), text.GetSize()});
  return text.GetSize();
}

}  // namespace

std::size_t quenfold::floor::measure(const std::vector<std::string>& arguments) {
  const std::string work = arguments.empty() ? "" : arguments[0];
  if (arguments.size() == 2 && (work == "copying" || work == "in-situ")) {
    return parse(readBytes(arguments[1]), work == "in-situ");
  }
  if (arguments.size() == 3 && work == "write") {
    return write(std::stoull(arguments[1]), arguments[2]);
  }
  throw std::invalid_argument("usage: rapidjson_floor copying|in-situ FILE | write BYTES FILE");
}
