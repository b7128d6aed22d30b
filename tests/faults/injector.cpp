#include "faults/injector.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <set>
#include <utility>

namespace quenfold::faults {
namespace {

namespace fs = std::filesystem;

constexpr std::array<unsigned long, 2> kOnceAndOn = {1, kFromThenOn};

std::string timesText(unsigned long times) {
  return times == kFromThenOn ? "from then on"
         : times == 1         ? "once"
                              : fmt::format("{} times", times);
}

/// Limits that break every output in turn, at its first byte, between two chunks and at its last.
std::set<std::uint64_t> limitsFor(const Conversion& conversion, const Leftovers& right) {
  std::set<std::uint64_t> limits = {0, 1};
  for (const std::string& path : conversion.outputs) {
    const std::uint64_t size = right.at(path).size();
    limits.insert({size / 2, size - std::min<std::uint64_t>(size, 1), size});
  }
  return limits;
}

}  // namespace

Injector::Injector(const Conversion& conversion, const Injection& injection)
    : conversion_(conversion),
      plan_(injection.plan),
      shim_(injection.shim),
      stride_(injection.stride) {
  plan_.arguments = conversion.arguments;
  plan_.standardInput = conversion.standardInput;
  right_ = rightLeftovers(conversion, plan_);
}

void Injector::failAllocations() {
  for (const unsigned long times : kOnceAndOn) {
    Row one = row("allocation, " + timesText(times));
    sweep(one, {"alloc", 1, times, ENOMEM}, stride_);
    finish(one);
  }
  if (stride_ > 1) {
    Row growth = row("allocation of 1 KiB or more, once");
    sweep(growth, {"growth", 1, 1, ENOMEM}, 1);
    finish(growth);
  }
}

void Injector::failSystemCalls() {
  for (const std::string_view call : {"open", "read", "write", "close", "stat", "mkdir"}) {
    failCall(call, "no space, I/O error, no access, no descriptor", {ENOSPC, EIO, EACCES, EMFILE});
    failCall(call, "no memory", {ENOMEM});
  }
}

void Injector::disturbSystemCalls() {
  constexpr unsigned long kManyTimes = 5;
  for (const unsigned long times : {1UL, kManyTimes}) {
    Row interrupted = row("interrupted call, " + timesText(times));
    for (const std::string_view call : {"open", "read", "write"}) {
      sweep(interrupted, {call, 1, times, EINTR}, 1);
    }
    finish(interrupted);
  }
  constexpr int kFewBytes = 97;
  Row small = row("one byte once, few bytes at a time");
  for (const std::string_view call : {"read", "write"}) {
    sweep(small, {call, 1, 1, -1}, 1);
    sweep(small, {call, 1, kFromThenOn, -kFewBytes}, 1);
  }
  finish(small);
}

void Injector::fillDisks() {
  Row full =
      row("full disk under an output", !conversion_.outputs.empty() && !conversion_.createsFolder);
  for (const std::string& path : conversion_.outputs) {
    if (!full.mustBeMet) {
      break;
    }
    Expectation expected;
    expected.device = path;
    if (!right_.front().at(path).empty()) {
      expected.message = writingFails(path);
      expected.brokenOutput = path;
    }
    resetOutputs(conversion_);
    fs::remove(path);
    fs::create_symlink("/dev/full", path);
    judgeRun(full, plan_, runProgram(plan_), expected);
  }
  finish(full);
}

void Injector::limitFileSizes() {
  Row limited = row("file size limit", !conversion_.outputs.empty());
  for (const std::uint64_t limit : limitsFor(conversion_, right_.front())) {
    RunPlan plan = plan_;
    plan.fileSizeLimit = limit;
    record(limited, plan, expectationOfLimit(conversion_, right_.front(), limit));
  }
  finish(limited);
}

void Injector::breakStandardStreams() {
  Row output = row("standard output closed, full, unread", conversion_.writesStandardOutput);
  for (const StandardOutput target :
       {StandardOutput::kClosed, StandardOutput::kFullDisk, StandardOutput::kPipeWithoutReader}) {
    RunPlan plan = plan_;
    plan.standardOutput = target;
    Expectation expected;
    if (conversion_.writesStandardOutput) {
      expected.brokenOutput = "standard output";
      expected.message = writingFails(expected.brokenOutput);
    }
    record(output, plan, expected);
  }
  finish(output);
  Row input = row("standard input closed");
  RunPlan plan = plan_;
  plan.standardInput = "";
  Expectation expected;
  if (conversion_.standardInput != "/dev/null") {
    expected.message = readingFails("standard input");
  }
  record(input, plan, expected);
  finish(input);
}

Row Injector::row(std::string kind, bool mustBeMet) const {
  return {conversion_.name, std::move(kind), mustBeMet, {}};
}

void Injector::failCall(std::string_view call, const std::string& reasons,
                        const std::vector<int>& errors) {
  const bool mustBeMet = call == "mkdir" ? conversion_.createsFolder : call != "stat";
  Row failing = row(fmt::format("{}: {}", call, reasons), mustBeMet);
  for (const int error : errors) {
    for (const unsigned long times : kOnceAndOn) {
      sweep(failing, {call, 1, times, error}, 1);
    }
  }
  finish(failing);
}

/// Call 1, 1 + stride, ... fails until the run has no more of them.
void Injector::sweep(Row& row, Fault fault, unsigned long stride) {
  RunPlan plan = plan_;
  plan.shim = shim_;
  for (bool struck = true; struck; fault.number += stride) {
    plan.fault = planOf(fault);
    resetOutputs(conversion_);
    const RunResult result = runProgram(plan);
    struck = !result.strikes.empty();
    if (struck) {
      judgeRun(row, plan, result, expectationOf(conversion_, fault, result.strikes));
    }
  }
}

void Injector::record(Row& row, const RunPlan& plan, const Expectation& expected) {
  resetOutputs(conversion_);
  judgeRun(row, plan, runProgram(plan), expected);
}

void Injector::judgeRun(Row& row, const RunPlan& plan, const RunResult& result,
                        const Expectation& expected) {
  const Outcome outcome = judge(result, conversion_, right_, expected);
  count(row, outcome);
  if (outcome == Outcome::kOther) {
    printDefect(row, plan.fault, expected, result);
  }
}

}  // namespace quenfold::faults
