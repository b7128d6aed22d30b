#include "kills/subject.h"

#include <fmt/core.h>

#include <stdexcept>

#include "faults/fault_plan.h"

namespace quenfold::kills {

Trial tryOut(const Subject& subject, const Command& command, const FolderState& from,
             const std::string& fault) {
  restore(from, subject.folder);
  faults::RunPlan plan;
  plan.program = command.front();
  plan.arguments.assign(command.begin() + 1, command.end());
  plan.shim = fault.empty() ? "" : subject.shim;
  plan.fault = fault;
  Trial trial;
  trial.result = faults::runProgram(plan);
  trial.struck = !trial.result.strikes.empty();
  trial.after = stateOf(subject.folder);
  return trial;
}

std::vector<Trial> tryKills(const Subject& subject, const Command& command,
                            const FolderState& from) {
  std::vector<Trial> trials;
  for (unsigned long n = 1;; ++n) {
    Trial trial = tryOut(subject, command, from, fmt::format("change {} 1 0", n));
    if (!trial.struck) {
      return trials;
    }
    trials.push_back(std::move(trial));
  }
}

Verdict::Verdict(const Subject& subject, const FolderState& before)
    : subject_(subject), old_(before) {
  const Trial trial = tryOut(subject, subject.replace, before);
  if (trial.result.status != 0 || trial.after.files == before.files) {
    throw std::runtime_error("the replacement fails undisturbed: " + trial.result.err);
  }
  new_ = trial.after;
}

bool Verdict::is(const FolderState& state, Side side) const {
  return state.files == (side == Side::kOld ? old_ : new_).files;
}

bool Verdict::isWhole(const FolderState& state) const {
  return is(state, Side::kOld) || is(state, Side::kNew);
}

Side Verdict::sideOf(const FolderState& state, std::string_view how) {
  const auto found = known_.find(state);
  if (found != known_.end()) {
    return found->second;
  }
  const Trial look = tryOut(subject_, subject_.look, state);
  // There may be nothing to look at.
  const bool ended = look.result.status.value_or(2) < 2 || look.after.files.empty();
  if (!ended || !isWhole(look.after)) {
    throw std::runtime_error(fmt::format("{}:\n{}became\n{}status {}: {}", how, describe(state),
                                         describe(look.after), look.result.status.value_or(-1),
                                         look.result.err));
  }
  const Side side = is(look.after, Side::kOld) ? Side::kOld : Side::kNew;
  known_[state] = side;
  return side;
}

}  // namespace quenfold::kills
