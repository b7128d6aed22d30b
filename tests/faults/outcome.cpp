#include "faults/outcome.h"

#include <sstream>
#include <string_view>

namespace quenfold::faults {
namespace {

std::string_view lastLine(std::string_view text) {
  while (!text.empty() && text.back() == '\n') {
    text.remove_suffix(1);
  }
  return text.substr(text.rfind('\n') + 1);  // from the start when there is one line only
}

bool beginsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

/// The lines that tell of a fault in an input; not those that a missing label leads to later.
std::string noticesIn(const std::string& text) {
  std::string notices;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (beginsWith(line, "Error ") && !beginsWith(line, "Error loading label for id:")) {
      notices += line + "\n";
    }
  }
  return notices;
}

const std::string* find(const Leftovers& leftovers, const std::string& path) {
  const auto found = leftovers.find(path);
  return found == leftovers.end() ? nullptr : &found->second;
}

bool same(const std::string* a, const std::string* b) {
  return a == nullptr || b == nullptr ? a == b : *a == *b;
}

/// Whether the bytes are the beginning of what they should be.
bool cutShort(const std::string* bytes, const std::string* goal) {
  return bytes != nullptr && goal != nullptr && beginsWith(*goal, *bytes);
}

/// Whether the output where the run broke off is as before or cut short.
bool brokenInside(const std::string& path, const Leftovers& left, const Leftovers& before,
                  const Leftovers& right) {
  const std::string* const bytes = find(left, path);
  return same(bytes, find(before, path)) || cutShort(bytes, find(right, path));
}

/// Whether a failed run wrote its outputs one after the other: finished ones up to the broken one,
/// and the rest as it was.
bool brokeOffInOrder(const Conversion& conversion, const Leftovers& left, const Leftovers& right,
                     const Expectation& expected) {
  const Leftovers before = untouched(conversion);
  bool broken = false;
  for (const std::string& path : conversion.outputs) {
    if (path == expected.brokenOutput) {
      if (path != expected.device && !brokenInside(path, left, before, right)) {
        return false;
      }
      broken = true;
    } else if (!same(find(left, path), find(broken ? before : right, path))) {
      return false;
    }
  }
  return beginsWith(right.at(""), left.at(""));
}

bool nothingLost(const Conversion& conversion, const Leftovers& left, const Leftovers& right,
                 const Expectation& expected) {
  return expected.brokenOutput.empty() ? left == untouched(conversion)
                                       : brokeOffInOrder(conversion, left, right, expected);
}

bool sameButDevice(const Leftovers& left, Leftovers goal, const Expectation& expected) {
  goal.erase(expected.device.empty() ? "none" : expected.device);
  return left == goal;
}

}  // namespace

Outcome judge(const RunResult& result, const Conversion& conversion,
              const std::vector<Leftovers>& right, const Expectation& expected) {
  const Leftovers left = leftoversOf(conversion, result);
  const Leftovers& goal = right.at(expected.missing);
  if (noticesIn(result.err) != expected.notices) {
    return Outcome::kOther;
  }
  if (!expected.message.empty()) {
    return result.status == 1 && lastLine(result.err) == expected.message &&
                   nothingLost(conversion, left, goal, expected)
               ? Outcome::kMessage
               : Outcome::kOther;
  }
  if (result.status != 0 || !sameButDevice(left, goal, expected)) {
    return Outcome::kOther;
  }
  return expected.missing == 0 ? Outcome::kRightBytes : Outcome::kNotice;
}

}  // namespace quenfold::faults
