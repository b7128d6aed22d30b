// What cJSON alone takes: the library as it comes, with malloc, and nothing of the program.
//
//   cjson_floor parse FILE        read, parse
//   cjson_floor parse-print FILE  read, parse, print formatted
//   cjson_floor build BYTES FILE  build legacy logical sources, print them formatted to a file of
//                                 about that size
//
// The bytes worked on go to standard output.

#include <cjson/cJSON.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "floor_files.h"
#include "floor_program.h"

namespace {

using quenfold::floor::writeBytes;

using Tree = std::unique_ptr<cJSON, decltype(&cJSON_Delete)>;
using Text = std::unique_ptr<char, decltype(&cJSON_free)>;

Text printed(const cJSON* tree) {
  Text text(cJSON_Print(tree), &cJSON_free);
  if (!text) {
    throw std::bad_alloc();
  }
  return text;
}

std::size_t parse(const std::string& text, bool print) {
  const Tree tree(cJSON_Parse(text.c_str()), &cJSON_Delete);
  if (!tree) {
    throw std::runtime_error("not JSON");
  }
  if (print) {
    printed(tree.get());
  }
  return text.size();
}

void addStrings(cJSON* record, const char* name, const std::vector<const char*>& texts) {
  cJSON* const array = cJSON_AddArrayToObject(record, name);
  for (const char* text : texts) {
    cJSON_AddItemToArray(array, cJSON_CreateString(text));
  }
}

/// A source of the usual shape: a port on each of 17 levels, by its key or by a user's label.
cJSON* sourceRecord() {
  constexpr std::size_t kLevels = 17;
  constexpr std::size_t kLabels = 5;
  std::vector<const char*> ports(kLevels, "Stage_1 Broadcast Hall.slot12.in[12].intercom.ch12");
  std::fill_n(ports.begin(), kLabels, "Contribution 123456");
  cJSON* const record = cJSON_CreateObject();
  cJSON_AddStringToObject(record, "name", "CAM 12345");
  cJSON_AddNumberToObject(record, "id", 12345);
  cJSON_AddNumberToObject(record, "key", 0);
  addStrings(record, "val", ports);
  cJSON_AddStringToObject(record, "description", "Rack 12345");
  addStrings(record, "category", {"Cameras", "Studio A", "", "", "", ""});
  cJSON_AddStringToObject(record, "tally", "T12345");
  cJSON_AddNumberToObject(record, "redirect", 1);
  return record;
}

std::size_t recordBytes() {
  const Tree record(sourceRecord(), &cJSON_Delete);
  return std::string_view(printed(record.get()).get()).size();
}

std::size_t build(std::size_t bytes, const std::string& path) {
  const Tree tree(cJSON_CreateObject(), &cJSON_Delete);
  cJSON* const records = cJSON_AddArrayToObject(tree.get(), "LogicalSource");
  for (std::size_t left = bytes / recordBytes(); left > 0; --left) {
    cJSON_AddItemToArray(records, sourceRecord());
  }
  const Text text = printed(tree.get());
  writeBytes(path, text.get());
  return std::string_view(text.get()).size();
}

}  // namespace

std::size_t quenfold::floor::measure(const std::vector<std::string>& arguments) {
  const std::string work = arguments.empty() ? "" : arguments[0];
  if (arguments.size() == 2 && (work == "parse" || work == "parse-print")) {
    return parse(readBytes(arguments[1]), work == "parse-print");
  }
  if (arguments.size() == 3 && work == "build") {
    return build(std::stoull(arguments[1]), arguments[2]);
  }
  throw std::invalid_argument("usage: cjson_floor parse|parse-print FILE | build BYTES FILE");
}
