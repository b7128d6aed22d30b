#include "app/driver.h"

#include <cstdint>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "app/error.h"
#include "app/files.h"
#include "app/stage_timer.h"
#include "app/text.h"
#include "logicalio/format.h"
#include "logicalio/pack.h"
#include "logicalio/unpack.h"
#include "matrices/pack.h"
#include "matrices/unpack.h"

namespace quenfold {
namespace {

/// Byte counts as the conversions return them: modulo 2^32.
struct RunSizes {
  std::uint32_t input;
  std::uint32_t output;
};

std::string firstOrEmpty(const std::vector<std::string>& names) {
  return names.empty() ? std::string() : names.front();
}

void reportMode(std::string_view banner, bool pack) {
  if (verbose) {
    std::cerr << banner << '\n' << (pack ? "Pack" : "Unpack") << " mode selected\n";
  }
}

void reportTotal(TimePoint runStart) {
  std::cerr << "Total: " << millisecondsSince(runStart) << " ms\n";
}

void reportSize(std::string_view what, std::uint32_t bytes) {
  std::cerr << what << " size: " << bytes / 1024 << "kB\n";
}

RunSizes packLogicalIO(const Options& options, TimePoint& stageStart) {
  const std::string inputPath = firstOrEmpty(options.inputFiles);
  std::string text = inputPath.empty() ? readStandardInput() : readFile(inputPath);
  const auto inputSize = static_cast<std::uint32_t>(text.size());
  logElapsed(stageStart, "loaded File");
  const std::uint32_t outputSize =
      convertVelmoraToPacked(options.sourceDir, inputPath, std::move(text), options.outputDir);
  return {inputSize, outputSize};
}

void unpackLogicalIO(const Options& options) {
  const auto [legacyText, hashText] =
      convertPackedToVelmora(firstOrEmpty(options.inputFiles), options.sourceDir);
  const std::string outputName = firstOrEmpty(options.outputFiles);
  if (outputName.empty()) {
    writeStandardOutput(legacyText);
    return;
  }
  const std::string outputPath = joinPath(options.outputDir, outputName);
  const std::string hashPath = outputPath + kHashFile;
  writeFile(outputPath, legacyText);
  writeFile(hashPath, hashText);
  if (verbose) {
    std::cerr << "File saved to " << outputPath << '\n';
  }
}

void reportLogicalIO(TimePoint runStart, RunSizes sizes) {
  if (!verbose) {
    return;
  }
  reportTotal(runStart);
  reportSize("Input", sizes.input);
  reportSize("Output", sizes.output);
  if (sizes.input != 0) {
    // Kept on purpose: 32-bit arithmetic, so the product wraps for outputs above about 42 MB.
    std::cerr << "Compression Ratio: " << sizes.output * 100U / sizes.input << "%\n";
  }
}

void runLogicalIO(const Options& options) {
  const TimePoint runStart = now();
  TimePoint stageStart = runStart;
  reportMode("Bit-Pack Velmora Database", options.pack);
  RunSizes sizes{};
  if (options.pack) {
    sizes = packLogicalIO(options, stageStart);
  } else {
    unpackLogicalIO(options);
  }
  // Kept on purpose: the clock is reset first, so this line shows the time since a moment ago.
  stageStart = now();
  logElapsed(stageStart, "Saved File");
  reportLogicalIO(runStart, sizes);
}

/// A file that cannot be read is packed as if it were empty, with a warning. Running out of memory,
/// or a file beyond the limits, ends the run: what it holds must not be replaced by nothing.
std::string readMatricesOrNothing(const std::string& path) {
  try {
    return readFile(path);
  } catch (const std::runtime_error& failure) {
    std::cerr << "Error loading " << path << " : " << failure.what() << ". Using empty data\n";
    return {};
  }
}

std::uint32_t packMatrices(const Options& options, TimePoint& stageStart) {
  std::string inputName;
  std::string text;
  if (options.inputFiles.empty()) {
    text = readStandardInput();
  } else {
    const std::string& input = options.inputFiles.front();
    text = readMatricesOrNothing(joinPath(options.sourceDir, input));
    inputName = split(input, '/').back();
  }
  logElapsed(stageStart, "loaded File");
  const std::uint32_t outputSize =
      convertMatricesToPacked(inputName, std::move(text), options.outputDir);
  // Kept on purpose: this mode has no text of its own to hand out, so the -o file ends up empty.
  // Without one nothing goes to standard output, which may be closed or full.
  if (!options.outputFiles.empty()) {
    writeFile(options.outputFiles.front(), {});
  }
  return outputSize;
}

void runMatrices(const Options& options) {
  reportMode("Compact Matrices Tree for Velmora Database", options.pack);
  const TimePoint runStart = now();
  TimePoint stageStart = runStart;
  const std::uint32_t outputSize =
      options.pack
          ? packMatrices(options, stageStart)
          : convertPackedMatrices(options.sourceDir, options.outputFiles, options.outputDir);
  logElapsed(stageStart, "Pack/Unpack total");
  if (verbose) {
    reportTotal(runStart);
    reportSize("Output", outputSize);
  }
}

}  // namespace

void run(const Options& options) {
  if (options.function == "logicalio") {
    runLogicalIO(options);
  } else if (options.function == "matrices") {
    runMatrices(options);
  } else {
    // The line end belongs to the message: the operator sees an empty line after it.
    throw runtimeError("Function mode must be 'logicalio' or 'matrices'. Try -h for help\n");
  }
}

}  // namespace quenfold
