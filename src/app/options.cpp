#include "app/options.h"

#include <unistd.h>

#include <array>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "app/stage_timer.h"
#include "app/text.h"

namespace quenfold {
namespace {

// Kept on purpose: "Output Input" in the -i line, and the trailing blanks of the examples.
constexpr std::array<std::string_view, 19> kUsage = {
    R"(Bitpack Velmora Logical IO files.)",
    R"(  OPTIONS:)",
    R"(      -h         Display this help menu)",
    R"(      -f[funct]  Function = logicalio | matrices.)",
    R"(      -i[files]  Comma delimited Output Input file path. Reads from stdin if not set.)",
    R"(      -o[files]  Comma delimited Output file path. Prints to stdout if not set)",
    R"(      -d[dir]    Output dir, uses current if not provided.)",
    R"(      -s[dir]    Source dir, uses current if not provided.)",
    R"(      -p         Pack - create packed file.)",
    R"(      -u         UnPack - unpack file.)",
    R"(      -v         Verbose mode - output profiling info to stderr)",
    R"()",
    R"( EXAMPLES:)",
    R"(   Pack legacy Velmora matrices.json from /tmp/db_tmp to active-db: )",
    R"(   quenfold -f matrices -p -v -s "/tmp/db_tmp" -i "matrices.json" -d "/active-db/" )",
    R"(   Pack legacy sources from in-db/sources.json (-i) using dbpack files in dbpack/ (-s) and write output to out-db/ (-d): )",
    R"(   quenfold -f logicalio -p -v -s "/dbpack/" -i "/in-db/sources.json" -d "/out-db/" )",
    R"(   Unpack legacy matrices, availables, & portLabels (-o) using dbpack files in dbpack/ (-s) and write output to db_tmp/ (-d): )",
    R"(   quenfold -f matrices -u -v -s "/dbpack/" -d "/db_tmp/" -o "availableOutputs.json,availableInputs.json,matrices.json,portLabels.json,userPortLabels.json" )",
};

}  // namespace

std::optional<Options> parseOptions(int argc, char** argv) {
  Options options;
  // Would end the options at the first other argument; nothing but the command line counts here.
  unsetenv("POSIXLY_CORRECT");
  // getopt answers an int: a plain char would never equal -1 where char is unsigned.
  for (int option = 0; (option = getopt(argc, argv, "hi:o:vpd:s:uf:")) != -1;) {
    switch (option) {
      case 'i':
        options.inputFiles = split(optarg, ',');
        break;
      case 'o':
        options.outputFiles = split(optarg, ',');
        break;
      case 'v':
        verbose = true;
        break;
      case 'p':
        options.pack = true;
        break;
      case 'u':
        options.pack = false;
        break;
      case 'd':
        options.outputDir = optarg;
        break;
      case 's':
        options.sourceDir = optarg;
        break;
      case 'f':
        options.function = optarg;
        break;
      default:
        return std::nullopt;
    }
  }
  return options;
}

void printUsage() {
  for (const std::string_view line : kUsage) {
    std::cerr << line << '\n';
  }
}

}  // namespace quenfold
