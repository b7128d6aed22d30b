#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

#include "app/text.h"
#include "kills/experiments.h"

namespace quenfold::kills {
namespace {

constexpr std::string_view kFinishedLater =
    "; the next run of quenfold-db on the folder finishes it\n";

[[noreturn]] void fail(std::string_view what, const std::string& fault, const Trial& trial) {
  throw std::runtime_error(fmt::format("{} [{}]: status {}, signal {}, \"{}\"\n{}", what, fault,
                                       trial.result.status.value_or(-1), trial.result.signal,
                                       trial.result.err, describe(trial.after)));
}

void require(unsigned long count) {
  if (count == 0) {
    throw std::runtime_error("no call failed");
  }
}

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool isOneLine(std::string_view text) {
  return text.size() > 1 && std::count(text.begin(), text.end(), '\n') == 1 && text.back() == '\n';
}

/// What runs, and where.
struct Run {
  const Subject& subject;
  const Command& command;
  const FolderState& from;
};

/// Calls `judge` with the fault and its trial, for the first call that fails, the second ..., until
/// the run has no more of them. How many there were.
template <typename Judge>
unsigned long sweep(const Run& run, const std::string& format, Judge judge) {
  for (unsigned long n = 1;; ++n) {
    const std::string fault = fmt::format(fmt::runtime(format), n);
    const Trial trial = tryOut(run.subject, run.command, run.from, fault);
    if (!trial.struck) {
      return n - 1;
    }
    judge(fault, trial);
  }
}

void judgeReplacement(Verdict& verdict, const std::string& fault, const Trial& trial) {
  if (trial.result.status == 0) {
    if (!verdict.is(trial.after, Side::kNew)) {
      fail("a replacement that succeeded", fault, trial);
    }
    return;
  }
  if (!trial.result.status || !isOneLine(trial.result.err)) {
    fail("a replacement that failed without saying so", fault, trial);
  }
  const bool promised = endsWith(trial.result.err, kFinishedLater);
  const bool once = fault.find(" on ") == std::string::npos;
  // What is printed at the end is all that is lost then.
  const bool silenced = endsWith(trial.result.err, "standard output\n");
  const bool isNew = verdict.sideOf(trial.after, "a failed call") == Side::kNew;
  if (once && !isNew && !(trial.after == verdict.oldState())) {
    fail("a replacement that failed and left something", fault, trial);
  }
  if (isNew != (promised || silenced)) {
    fail("a replacement that failed and said the wrong thing", fault, trial);
  }
}

void judgeLook(Verdict& verdict, const FolderState& state, const std::string& fault,
               const Trial& trial) {
  const bool failed = trial.result.status == 2;
  if (trial.result.signal != 0 || failed != isOneLine(trial.result.err) ||
      (!failed && !verdict.isWhole(trial.after)) ||
      verdict.sideOf(trial.after, "a failed look") != verdict.sideOf(state, "")) {
    fail("a look", fault, trial);
  }
}

/// A call that a signal interrupts is none that fails.
void interrupt(const Run& run, const Verdict& verdict) {
  for (const std::string_view call :
       {"open", "read", "write", "mkdir", "flock", "sync", "rename", "unlink"}) {
    sweep(run, fmt::format("{} {{}} 3 {}", call, EINTR),
          [&](const std::string& fault, const Trial& trial) {
            if (trial.result.status != 0 || !verdict.isWhole(trial.after)) {
              fail("an interrupted call", fault, trial);
            }
          });
  }
}

/// What a run must say when one of those calls fails.
struct Complaint {
  std::string_view call;
  std::string_view text;
};

constexpr std::array<Complaint, 7> kComplaints = {{
    {"flock", "error while locking folder: "},
    {"list", "error while reading folder: "},
    {"sync", "error while writing f"},  // a file or a folder
    {"chmod", "error while writing file: "},
    {"rename", "error while renaming file: "},
    {"unlink", "error while removing file: "},
    {"mkdir", "error while creating folder: "},
}};

bool has(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

unsigned long complain(const Run& run) {
  unsigned long count = 0;
  for (const Complaint& complaint : kComplaints) {
    count += sweep(run, fmt::format("{} {{}} 1 {}", complaint.call, EIO),
                   [&](const std::string& fault, const Trial& trial) {
                     if (trial.result.status == 0 || !has(trial.result.err, complaint.text) ||
                         !has(trial.result.err, ": Input/output error")) {
                       fail("another complaint", fault, trial);
                     }
                   });
  }
  return count;
}

/// Some file systems have no sync for folders; for files all have.
void syncUnsupported(const Run& run) {
  const unsigned long count = sweep(run, fmt::format("sync {{}} 1 {}", EINVAL),
                                    [&](const std::string& fault, const Trial& trial) {
                                      const std::string& path = trial.result.strikes.front();
                                      const bool isFile =
                                          beginsWith(path, run.subject.folder + "/");
                                      if ((trial.result.status == 0) == isFile) {
                                        fail("a sync that is not supported", fault, trial);
                                      }
                                    });
  require(count);
}

/// Who may create files in a folder need not be allowed to read its parent.
void parentUnreadable(const Run& run) {
  const unsigned long count = sweep(run, fmt::format("open {{}} 1 {}", EACCES),
                                    [&](const std::string& fault, const Trial& trial) {
                                      const bool isParent =
                                          endsWith(trial.result.strikes.front(), "/..");
                                      if ((trial.result.status == 0) != isParent) {
                                        fail("a folder that may not be read", fault, trial);
                                      }
                                    });
  require(count);
}

std::set<FolderState> unsettledStates(const Subject& subject, const Verdict& verdict) {
  std::set<FolderState> states;
  for (const Trial& trial : tryKills(subject, subject.replace, verdict.oldState())) {
    if (!verdict.isWhole(trial.after)) {
      states.insert(trial.after);
    }
  }
  return states;
}

}  // namespace

void failCalls(const Subject& subject, const FolderState& before) {
  Verdict verdict(subject, before);
  const Run run = {subject, subject.replace, before};
  unsigned long count = complain(run);
  require(count);
  for (const int error : {EIO, ENOSPC, ENOMEM}) {
    for (const std::string_view times : {"1", "on"}) {
      count += sweep(run, fmt::format("any {{}} {} {}", times, error),
                     [&](const std::string& fault, const Trial& trial) {
                       judgeReplacement(verdict, fault, trial);
                     });
    }
  }
  fmt::print("a call of the replacement failed {} times\n", count);
  interrupt(run, verdict);
  syncUnsupported(run);
  parentUnreadable(run);
}

void failLooks(const Subject& subject, const FolderState& before) {
  Verdict verdict(subject, before);
  unsigned long count = 0;
  const std::set<FolderState> states = unsettledStates(subject, verdict);
  for (const FolderState& state : states) {
    const Run run = {subject, subject.look, state};
    const auto judge = [&](const std::string& fault, const Trial& trial) {
      judgeLook(verdict, state, fault, trial);
    };
    count += complain(run);
    count += sweep(run, fmt::format("change {{}} 1 {}", EIO), judge);
    count += sweep(run, fmt::format("change {{}} on {}", EROFS), judge);
    interrupt(run, verdict);
  }
  require(count);
  fmt::print("a call of the look failed {} times, in {} states\n", count, states.size());
}

}  // namespace quenfold::kills
