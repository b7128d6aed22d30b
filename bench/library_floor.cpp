// Does with a file what a conversion cannot do without: reads it and lets a library parse it.
//
//   library_floor rapidjson FILE    read, parse in place
//   library_floor cjson FILE        read, parse
//   library_floor cjson-print FILE  read, parse, print formatted

#include <exception>
#include <iostream>
#include <string>
#include <string_view>

#include "app/error.h"
#include "app/files.h"
#include "json/cjson_handle.h"
#include "json/document.h"

namespace {

using quenfold::runtimeError;

void parseRapidJson(std::string text) {
  if (quenfold::parseJson(text).IsNull()) {
    throw runtimeError("not JSON");
  }
}

void parseCJson(const std::string& text, bool print) {
  const quenfold::CJsonDocument tree = quenfold::parseCJson(text);
  if (!tree || (print && quenfold::printCJson(*tree).empty())) {
    throw runtimeError("not JSON");
  }
}

void measure(std::string_view library, const std::string& path) {
  if (library == "rapidjson") {
    parseRapidJson(quenfold::readFile(path));
  } else if (library == "cjson" || library == "cjson-print") {
    parseCJson(quenfold::readFile(path), library == "cjson-print");
  } else {
    throw runtimeError("unknown library: {}", library);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc != 3) {
      throw runtimeError("usage: library_floor rapidjson|cjson|cjson-print FILE");
    }
    measure(argv[1], argv[2]);
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
