#include <fmt/core.h>

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/text.h"
#include "faults/fault_plan.h"
#include "kills/disk.h"
#include "kills/experiments.h"

namespace quenfold::kills {
namespace {

/// A run, call by call.
struct Course {
  std::vector<Event> events;
  std::vector<FolderState> after;  // the folder after each
};

Event eventOf(const std::string& line) {
  std::vector<std::string> words = split(line, '\t');
  words.resize(3);
  return {words[0], words[1], words[2]};
}

Course courseOf(const Subject& subject, const Command& command, const FolderState& from) {
  Course course;
  for (const Trial& trial : tryKills(subject, command, from)) {
    course.after.push_back(trial.after);
  }
  const Trial whole = tryOut(subject, command, from, faults::kTrace);
  course.after.push_back(whole.after);
  course.after.erase(course.after.begin());  // before the first call
  for (const std::string& line : whole.result.strikes) {
    course.events.push_back(eventOf(line));
  }
  if (course.events.size() != course.after.size()) {
    throw std::runtime_error("two runs from one state differ");
  }
  return course;
}

/// Cuts of the power, and what comes of them.
class PowerCuts {
 public:
  PowerCuts(const Subject& subject, const FolderState& before)
      : subject_(subject), verdict_(subject, before) {}

  /// The replacement, each of its kills, and what follows that.
  void tryAll();

 private:
  enum class Allowed { kBoth, kOld, kNew };

  void follow(const Command& command, const FolderState& from, Disk disk);
  void cut(const Disk& disk, Allowed allowed, std::string_view when);
  void cutAtTheEnd(const Command& command, const FolderState& after, const Disk& disk);
  const Course& course(const Command& command, const FolderState& from);
  static Allowed just(Side side) { return side == Side::kOld ? Allowed::kOld : Allowed::kNew; }

  const Subject& subject_;
  Verdict verdict_;
  std::map<std::pair<Command, FolderState>, Course> courses_;
  std::set<FolderState> left_;
  unsigned long cuts_ = 0;
};

const Course& PowerCuts::course(const Command& command, const FolderState& from) {
  const auto [found, isNew] = courses_.try_emplace({command, from});
  if (isNew) {
    found->second = courseOf(subject_, command, from);
  }
  return found->second;
}

void PowerCuts::cut(const Disk& disk, Allowed allowed, std::string_view when) {
  for (const FolderState& state : disk.statesWithoutPower()) {
    ++cuts_;
    left_.insert(state);
    const Allowed side = just(verdict_.sideOf(state, when));
    if (allowed != Allowed::kBoth && side != allowed) {
      throw std::runtime_error(
          fmt::format("{}: what was there is gone\n{}", when, describe(state)));
    }
  }
}

/// What a replacement leaves is on the disk when it ends, and nothing else is; of what a look took
/// away some may come back.
void PowerCuts::cutAtTheEnd(const Command& command, const FolderState& after, const Disk& disk) {
  cut(disk, just(verdict_.sideOf(after, "")), "power cut after a run");
  const std::set<FolderState> states = disk.statesWithoutPower();
  if (command == subject_.replace && states != std::set<FolderState>{after}) {
    throw std::runtime_error("power cut after a replacement:\n" + describe(*states.begin()));
  }
}

/// The command in a folder that was left so.
void PowerCuts::follow(const Command& command, const FolderState& from, Disk disk) {
  const Course& run = course(command, from);
  for (std::size_t i = 0; i < run.events.size(); ++i) {
    if (disk.apply(run.events[i], run.after[i])) {
      cut(disk, Allowed::kBoth, "power cut in a run after a killed one");
    }
  }
  cut(disk, just(verdict_.sideOf(run.after.back(), "")),
      "power cut after a run after a killed one");
}

void PowerCuts::tryAll() {
  const FolderState& before = verdict_.oldState();
  Disk disk(subject_.folder, before);
  const Course& run = course(subject_.replace, before);
  for (std::size_t i = 0; i < run.events.size(); ++i) {
    if (disk.apply(run.events[i], run.after[i])) {
      cut(disk, Allowed::kBoth, "power cut in a replacement");
      follow(subject_.look, run.after[i], disk);
      follow(subject_.replace, run.after[i], disk);
    }
  }
  cutAtTheEnd(subject_.replace, run.after.back(), disk);
  fmt::print("the power cut {} times, with {} states of the folder\n", cuts_, left_.size());
}

}  // namespace

void cutPower(const Subject& subject, const FolderState& before) {
  PowerCuts(subject, before).tryAll();
}

}  // namespace quenfold::kills
