#include "faults/expectation.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace quenfold::faults {
namespace {

constexpr const char* kNoMemory = "std::bad_alloc";
constexpr std::string_view kStandardOutput = "standard output";

bool isAllocation(const Fault& fault) { return fault.call == "alloc" || fault.call == "growth"; }

/// A call that is to be repeated, or did a part of its work.
bool isPassing(const Fault& fault) { return fault.error == EINTR || fault.error < 0; }

bool isOutput(const Conversion& conversion, const std::string& path) {
  const auto& outputs = conversion.outputs;
  return path == kStandardOutput ||
         std::find(outputs.begin(), outputs.end(), path) != outputs.end();
}

/// Where the outputs go; what is there need not be known before it is made.
bool isExistingFolder(const Conversion& conversion, const std::string& path) {
  return !conversion.createsFolder && !conversion.outputs.empty() &&
         std::filesystem::path(conversion.outputs.front()).parent_path() == path;
}

/// Whether the call may fail without a trace: what was read is there when its file is closed, and
/// a size only helps to make room.
bool isHarmless(const Conversion& conversion, const Fault& fault, const std::string& path) {
  return (fault.call == "close" && !isOutput(conversion, path)) ||
         (fault.call == "stat" && !isExistingFolder(conversion, path));
}

std::string folderFails(const std::string& path, int error) {
  return fmt::format("mkdir({}): {}", path, std::generic_category().message(error));
}

std::string messageOf(const Fault& fault, const std::string& path) {
  if (fault.call == "mkdir") {
    return folderFails(path, fault.error);
  }
  if (fault.call == "stat") {
    return folderFails(path, EEXIST);
  }
  if (fault.call == "write" || fault.call == "close") {
    return writingFails(path);
  }
  if (isAllocation(fault) || fault.error == ENOMEM) {
    return kNoMemory;
  }
  return fault.call == "read" ? readingFails(path) : "error while opening file: " + path;
}

/// The bit of the optional input, or 0 for any other file.
unsigned optionalBit(const Conversion& conversion, const std::string& path) {
  unsigned bit = 1;
  for (const OptionalInput& input : conversion.optionalInputs) {
    if (input.path == path) {
      return bit;
    }
    bit <<= 1U;
  }
  return 0;
}

/// Takes the strike on the optional input in; false when it is fatal.
bool doWithout(const Conversion& conversion, const Fault& fault, const std::string& path,
               Expectation& expected) {
  const unsigned bit = optionalBit(conversion, path);
  if (bit == 0 || fault.error == ENOMEM) {
    return false;
  }
  const std::string& notice = conversion.optionalInputs.at(bit / 2).notice;
  expected.missing |= bit;
  expected.notices += fmt::format(fmt::runtime(notice), messageOf(fault, path));
  return true;
}

}  // namespace

std::string planOf(const Fault& fault) {
  const std::string times = fault.times == kFromThenOn ? "on" : std::to_string(fault.times);
  return fmt::format("{} {} {} {}", fault.call, fault.number, times, fault.error);
}

std::string writingFails(std::string_view path) {
  return fmt::format("error while writing file: {}", path);
}

std::string readingFails(std::string_view path) {
  return fmt::format("error while reading file: {}", path);
}

Expectation expectationOf(const Conversion& conversion, const Fault& fault,
                          const std::vector<std::string>& strikes) {
  Expectation expected;
  if (isPassing(fault)) {
    return expected;
  }
  for (const std::string& path : strikes) {
    if (isHarmless(conversion, fault, path) || doWithout(conversion, fault, path, expected)) {
      continue;
    }
    expected.message = messageOf(fault, path);
    expected.brokenOutput = isOutput(conversion, path) ? path : "";
    break;
  }
  return expected;
}

Expectation expectationOfLimit(const Conversion& conversion, const Leftovers& right,
                               std::uint64_t limit) {
  for (const std::string& path : conversion.outputs) {
    if (right.at(path).size() > limit) {
      Expectation expected;
      expected.message = writingFails(path);
      expected.brokenOutput = path;
      return expected;
    }
  }
  return {};
}

}  // namespace quenfold::faults
