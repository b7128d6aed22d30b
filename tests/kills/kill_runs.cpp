#include <fmt/core.h>

#include <array>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "kills/experiments.h"

namespace quenfold::kills {
namespace {

[[noreturn]] void fail(const std::string& what, const FolderState& state) {
  throw std::runtime_error(fmt::format("{}:\n{}", what, describe(state)));
}

/// Every state that a killed replacement leaves. Once there are the new files there are no others.
std::set<FolderState> killReplacement(const Subject& subject, Verdict& verdict) {
  std::set<FolderState> states;
  std::array<unsigned long, 2> counts = {};
  for (const Trial& trial : tryKills(subject, subject.replace, verdict.oldState())) {
    const Side side = verdict.sideOf(trial.after, "a killed replacement");
    if (side == Side::kOld && counts[1] > 0) {
      fail("the old files again, after the new ones", trial.after);
    }
    ++counts[side == Side::kOld ? 0 : 1];
    states.insert(trial.after);
  }
  if (counts[0] == 0 || counts[1] == 0) {
    throw std::runtime_error("no kill met both sides of the replacement");
  }
  fmt::print("the replacement killed at {} calls: {} times the old files, {} times the new ones\n",
             counts[0] + counts[1], counts[0], counts[1]);
  return states;
}

}  // namespace

void killRuns(const Subject& subject, const FolderState& before) {
  Verdict verdict(subject, before);
  std::set<FolderState> seen = killReplacement(subject, verdict);
  std::vector<FolderState> waiting(seen.begin(), seen.end());
  unsigned long looks = 0;
  while (!waiting.empty()) {
    const FolderState state = waiting.back();
    waiting.pop_back();
    for (const Trial& trial : tryKills(subject, subject.look, state)) {
      ++looks;
      if (verdict.sideOf(trial.after, "a killed look") != verdict.sideOf(state, "")) {
        fail("a killed look changed sides", state);
      }
      if (seen.insert(trial.after).second) {
        waiting.push_back(trial.after);
      }
    }
  }
  fmt::print("looks killed at {} calls, from {} states\n", looks, seen.size());
}

void killNextRuns(const Subject& subject, const FolderState& before) {
  Verdict verdict(subject, before);
  const std::set<FolderState> states = killReplacement(subject, verdict);
  unsigned long kills = 0;
  for (const FolderState& state : states) {
    for (const Trial& trial : tryKills(subject, subject.replace, state)) {
      ++kills;
      if (verdict.sideOf(trial.after, "a killed next replacement") == Side::kOld &&
          verdict.sideOf(state, "") == Side::kNew) {
        fail("the next replacement brought the old files back", state);
      }
    }
  }
  fmt::print("the next replacement killed at {} calls, from {} states\n", kills, states.size());
}

}  // namespace quenfold::kills
