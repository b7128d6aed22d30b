#include "faults/conversion.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace quenfold::faults {
namespace {

namespace fs = std::filesystem;

constexpr const char* kAllLegacyFiles =
    "matrices.json,availableInputs.json,availableOutputs.json,portLabels.json,userPortLabels.json";

std::vector<std::string> legacyFilesIn(const std::string& folder) {
  return {folder + "/matrices.json", folder + "/availableInputs.json",
          folder + "/availableOutputs.json", folder + "/portLabels.json",
          folder + "/userPortLabels.json"};
}

Conversion matricesPack() {
  Conversion conversion;
  conversion.name = "matrices pack";
  conversion.arguments = {"-v", "-f",  "matrices", "-p",       "-s", "in", "-i", "matrices.json",
                          "-d", "out", "-o",       "out/empty"};
  conversion.outputs = {"out/dbpack_deviceLabels.json", "out/dbpack_matrices.json",
                        "out/dbpack_matricesInternalDetails.json", "out/dbpack_portLabels.json",
                        "out/empty"};
  conversion.optionalInputs = {
      {"in/matrices.json",
       "Error loading in/matrices.json : {}. Using empty data\n"
       "Error decoding matrices.json: matrices.json root object is not array.\n"}};
  return conversion;
}

Conversion matricesUnpack() {
  Conversion conversion;
  conversion.name = "matrices unpack";
  conversion.arguments = {"-v",     "-f", "matrices", "-u", "-s",
                          "packed", "-d", "out",      "-o", kAllLegacyFiles};
  conversion.outputs = legacyFilesIn("out");
  return conversion;
}

Conversion matricesUnpackIntoNewFolder() {
  Conversion conversion;
  conversion.name = "matrices unpack, new folder";
  conversion.arguments = {"-f", "matrices", "-s", "packed", "-d", "new", "-o", kAllLegacyFiles};
  conversion.outputs = legacyFilesIn("new");
  conversion.createsFolder = true;
  return conversion;
}

Conversion logicalIOPack() {
  Conversion conversion;
  conversion.name = "logicalio pack";
  conversion.arguments = {"-v",     "-f", "logicalio",       "-p", "-s",
                          "packed", "-i", "in/sources.json", "-d", "out"};
  conversion.outputs = {"out/logicalSourcesPorts.json", "out/logicalSourcesLabels.json",
                        "out/logicalSourcesLegacyCategories.json", "in/sources.json.hash"};
  return conversion;
}

Conversion logicalIOPackFromStandardInput() {
  Conversion conversion = logicalIOPack();
  conversion.name = "logicalio pack, standard input";
  conversion.arguments = {"-f", "logicalio", "-p", "-s", "packed", "-d", "out"};
  conversion.outputs.pop_back();
  conversion.standardInput = "in/sources.json";
  return conversion;
}

Conversion logicalIOUnpack() {
  Conversion conversion;
  conversion.name = "logicalio unpack";
  conversion.arguments = {"-v", "-f",     "logicalio", "-u",
                          "-s", "packed", "-i",        "logicalSources",
                          "-d", "out",    "-o",        "sources.json"};
  conversion.outputs = {"out/sources.json", "out/sources.json.hash"};
  conversion.optionalInputs = {
      {"packed/logicalSourcesLabels.json",
       "Error parsing Label map: {} - Assuming monolithic file.\n"},
      {"packed/logicalSourcesLegacyCategories.json",
       "Error parsing Legacy Category map: {} - Assuming monolithic file.\n"}};
  return conversion;
}

Conversion logicalIOUnpackToStandardOutput() {
  Conversion conversion = logicalIOUnpack();
  conversion.name = "logicalio unpack, standard output";
  conversion.arguments = {"-f", "logicalio", "-s", "packed", "-i", "logicalSources"};
  conversion.outputs.clear();
  conversion.writesStandardOutput = true;
  return conversion;
}

std::string bytesOf(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

std::string hidden(const std::string& path) { return path + ".away"; }

/// A fault-free run with those optional inputs out of the way whose bit is set in `missing`.
RunResult runWithout(unsigned missing, const Conversion& conversion, const RunPlan& plan) {
  for (std::size_t i = 0; i < conversion.optionalInputs.size(); ++i) {
    if ((missing >> i & 1U) != 0) {
      fs::rename(conversion.optionalInputs[i].path, hidden(conversion.optionalInputs[i].path));
    }
  }
  resetOutputs(conversion);
  RunResult result = runProgram(plan);
  for (const OptionalInput& input : conversion.optionalInputs) {
    if (fs::exists(hidden(input.path))) {
      fs::rename(hidden(input.path), input.path);
    }
  }
  return result;
}

}  // namespace

const std::vector<Conversion>& conversions() {
  static const std::vector<Conversion> all = {matricesPack(),
                                              matricesUnpack(),
                                              matricesUnpackIntoNewFolder(),
                                              logicalIOPack(),
                                              logicalIOPackFromStandardInput(),
                                              logicalIOUnpack(),
                                              logicalIOUnpackToStandardOutput()};
  return all;
}

void resetOutputs(const Conversion& conversion) {
  for (const std::string& path : conversion.outputs) {
    if (conversion.createsFolder) {
      fs::remove_all(fs::path(path).parent_path());
    } else {
      fs::remove(path);  // it may be a link to a device
      std::ofstream(path, std::ios::binary) << kOldContent;
    }
  }
}

Leftovers leftoversOf(const Conversion& conversion, const RunResult& result) {
  Leftovers leftovers = {{"", result.out}};
  for (const std::string& path : conversion.outputs) {
    if (fs::is_regular_file(fs::symlink_status(path))) {
      leftovers[path] = bytesOf(path);
    }
  }
  return leftovers;
}

Leftovers untouched(const Conversion& conversion) {
  Leftovers leftovers = {{"", ""}};
  for (const std::string& path : conversion.outputs) {
    if (!conversion.createsFolder) {
      leftovers[path] = kOldContent;
    }
  }
  return leftovers;
}

std::vector<Leftovers> rightLeftovers(const Conversion& conversion, const RunPlan& plan) {
  std::vector<Leftovers> right;
  for (unsigned missing = 0; missing < 1U << conversion.optionalInputs.size(); ++missing) {
    const RunResult result = runWithout(missing, conversion, plan);
    if (result.status != 0) {
      throw std::runtime_error(conversion.name + " fails without any fault: " + result.err);
    }
    right.push_back(leftoversOf(conversion, result));
  }
  return right;
}

}  // namespace quenfold::faults
