#include "faults/outcome.h"

#include <algorithm>
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

bool hasMessage(const RunResult& result, const Expectation& expectation) {
  return std::any_of(
      expectation.messages.begin(), expectation.messages.end(),
      [&](const std::string& message) { return beginsWith(lastLine(result.err), message); });
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

/// Whether a failed run wrote its outputs one after the other: finished ones, at most one that is
/// cut short, and the rest as it was.
bool brokeOffInOrder(const Conversion& conversion, const Leftovers& left, const Leftovers& right,
                     const Expectation& expectation) {
  const Leftovers before = untouched(conversion);
  bool broken = false;
  for (const std::string& path : conversion.outputs) {
    const std::string* const bytes = find(left, path);
    if (path == expectation.unreadable) {
      broken = true;
    } else if (broken ? !same(bytes, find(before, path)) : !same(bytes, find(right, path))) {
      const bool asBefore = same(bytes, find(before, path));
      if (broken || !(asBefore || cutShort(bytes, find(right, path)))) {
        return false;
      }
      broken = true;
    }
  }
  return true;
}

bool nothingLost(const Conversion& conversion, const Leftovers& left,
                 const std::vector<Leftovers>& right, const Expectation& expectation) {
  if (expectation.outputsUntouched) {
    return left == untouched(conversion);
  }
  return std::any_of(right.begin(), right.end(), [&](const Leftovers& goal) {
    return beginsWith(goal.at(""), left.at("")) &&
           brokeOffInOrder(conversion, left, goal, expectation);
  });
}

bool sameButUnreadable(const Leftovers& left, Leftovers goal, const Expectation& expectation) {
  goal.erase(expectation.unreadable.empty() ? "none" : expectation.unreadable);
  return left == goal;
}

}  // namespace

Outcome judge(const RunResult& result, const Conversion& conversion,
              const std::vector<Leftovers>& right, const Expectation& expectation) {
  const Leftovers left = leftoversOf(conversion, result);
  if (result.status == 1) {
    return hasMessage(result, expectation) && nothingLost(conversion, left, right, expectation)
               ? Outcome::kMessage
               : Outcome::kOther;
  }
  if (result.status != 0) {
    return Outcome::kOther;
  }
  if (sameButUnreadable(left, right.front(), expectation)) {
    return Outcome::kRightBytes;
  }
  const bool noticed = expectation.noticeAllowed && !conversion.notice.empty() &&
                       result.err.find(conversion.notice) != std::string::npos;
  return noticed && std::find(right.begin(), right.end(), left) != right.end() ? Outcome::kNotice
                                                                               : Outcome::kOther;
}

}  // namespace quenfold::faults
