// Lets every allocation and every system call of every conversion fail, one by one, and sorts what
// comes of it into a table.
//
//   inject_faults PROGRAM SHIM DATABASE [CONVERSION]
//
// Status 1 when a run ends in anything but the defined message, the right bytes or the defined
// notice, or when a kind of fault was never met.

#include <fmt/core.h>

#include <array>
#include <cerrno>
#include <exception>
#include <filesystem>
#include <string_view>

#include "faults/conversion.h"
#include "faults/outcome.h"
#include "faults/program_run.h"
#include "support/scratch_path.h"

namespace quenfold::faults {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNoMemory = "std::bad_alloc";
constexpr const char* kOpening = "error while opening file: ";
constexpr const char* kReading = "error while reading file: ";
constexpr const char* kWriting = "error while writing file: ";
constexpr const char* kCreating = "mkdir(";

/// Why a system call fails.
struct Reasons {
  std::string_view name;
  std::vector<int> errors;
};

/// One line of the table.
struct Row {
  std::string kind;
  bool mustBeMet = true;
  std::array<int, 4> counts{};     // by `Outcome`
  std::size_t fewestMessages = 0;  // of faults that must not be passed over

  [[nodiscard]] int runs() const { return counts[0] + counts[1] + counts[2] + counts[3]; }
};

/// The faults of one conversion.
class Injector {
 public:
  Injector(const Conversion& conversion, RunPlan plan, std::string shim)
      : conversion_(conversion), plan_(std::move(plan)), shim_(std::move(shim)) {
    plan_.arguments = conversion.arguments;
    plan_.standardInput = conversion.standardInput;
    right_ = rightLeftovers(conversion, plan_);
  }

  void failAllocations() {
    const Expectation expected = {{kNoMemory}, true, false, ""};
    for (const std::string_view mode : {"once", "on"}) {
      Row row{fmt::format("allocation, {}", mode == "on" ? "from then on" : mode)};
      sweep(row, {"alloc", mode, ENOMEM}, expected);
      finish(row);
    }
  }

  void failSystemCalls() {
    const Reasons refused = {"no space, I/O error, no access, no descriptor",
                             {ENOSPC, EIO, EACCES, EMFILE}};
    const Reasons exhausted = {"no memory", {ENOMEM}};
    failCall("open", refused, {{kOpening}, false, true, ""}, true);
    failCall("open", exhausted, {{kNoMemory}, false, false, ""}, true);
    failCall("read", refused, {{kReading}, true, true, ""}, true);
    failCall("read", exhausted, {{kNoMemory}, true, false, ""}, true);
    for (const Reasons& reasons : {refused, exhausted}) {
      failCall("write", reasons, {{kWriting}, false, false, ""}, true);
      failCall("close", reasons, {{kWriting}, false, false, ""}, true);
      failCall("stat", reasons, {{kCreating}, true, false, ""}, false);
      failCall("mkdir", reasons, {{kCreating}, true, false, ""}, conversion_.createsFolder);
    }
    Row interrupted{"interrupted call"};
    for (const std::string_view call : {"open", "read", "write"}) {
      sweep(interrupted, {call, "once", EINTR}, {});
    }
    finish(interrupted);
    Row small{"one byte at a time"};
    for (const std::string_view call : {"read", "write"}) {
      sweep(small, {call, "on", 0}, {});
    }
    finish(small);
  }

  void fillDisks() {
    Row row{"full disk under an output", !conversion_.outputs.empty()};
    for (const std::string& path : conversion_.outputs) {
      if (conversion_.createsFolder) {
        row.mustBeMet = false;
        break;
      }
      resetOutputs(conversion_);
      fs::remove(path);
      fs::create_symlink("/dev/full", path);
      record(row, plan_, {{kWriting + path}, false, false, path});
    }
    finish(row);
  }

  void limitFileSizes() {
    constexpr std::array<std::uint64_t, 10> kLimits = {0,   1,   10,  100,  200,
                                                       400, 600, 800, 1000, 1500};
    Row row{"file size limit", !conversion_.outputs.empty()};
    for (const std::uint64_t limit : kLimits) {
      RunPlan plan = plan_;
      plan.fileSizeLimit = limit;
      resetOutputs(conversion_);
      record(row, plan, {{kWriting}, false, false, ""});
    }
    finish(row);
  }

  void breakStandardStreams() {
    Row row{"standard output closed, full, unread", conversion_.writesStandardOutput};
    for (const StandardOutput target :
         {StandardOutput::kClosed, StandardOutput::kFullDisk, StandardOutput::kPipeWithoutReader}) {
      RunPlan plan = plan_;
      plan.standardOutput = target;
      Expectation expected;
      if (conversion_.writesStandardOutput) {
        expected.messages = {"error while writing file: standard output"};
      }
      resetOutputs(conversion_);
      record(row, plan, expected);
    }
    finish(row);
    Row input{"standard input closed"};
    RunPlan plan = plan_;
    plan.standardInput = "";
    Expectation expected;
    if (conversion_.standardInput != "/dev/null") {
      expected = {{"error while reading file: standard input"}, true, false, ""};
    }
    resetOutputs(conversion_);
    record(input, plan, expected);
    finish(input);
  }

  [[nodiscard]] bool sound() const { return sound_; }

 private:
  /// What the preloaded library is asked for, but for the number of the call.
  struct Fault {
    std::string_view call;
    std::string_view mode;
    int error;
  };

  void failCall(std::string_view call, const Reasons& reasons, const Expectation& expected,
                bool mustBeMet) {
    constexpr std::array<std::string_view, 2> kModes = {"once", "on"};
    Row row{fmt::format("{}: {}", call, reasons.name), mustBeMet};
    for (const int error : reasons.errors) {
      for (const std::string_view mode : kModes) {
        sweep(row, {call, mode, error}, expected);
      }
    }
    if (call == "close") {  // only then is known whether an output took all that was written
      row.fewestMessages = conversion_.outputs.size() * reasons.errors.size() * kModes.size();
    }
    finish(row);
  }

  /// Call 1, 2, 3, ... fails until the run has no more of them.
  void sweep(Row& row, const Fault& fault, const Expectation& expected) {
    RunPlan plan = plan_;
    plan.shim = shim_;
    bool struck = true;
    for (int number = 1; struck; ++number) {
      plan.fault = fmt::format("{} {} {} {}", fault.call, number, fault.mode, fault.error);
      resetOutputs(conversion_);
      struck = record(row, plan, expected);
    }
  }

  /// Runs, and counts the run when it met its fault; a plan without the library always does.
  bool record(Row& row, const RunPlan& plan, const Expectation& expected) {
    const RunResult result = runProgram(plan);
    if (!plan.shim.empty() && !result.struck) {
      return false;
    }
    const Outcome outcome = judge(result, conversion_, right_, expected);
    ++row.counts.at(static_cast<std::size_t>(outcome));
    if (outcome == Outcome::kOther) {
      fmt::print("DEFECT: {}, {} [{}]: status {}, signal {}, standard error:\n{}\n",
                 conversion_.name, row.kind, plan.fault, result.status.value_or(-1), result.signal,
                 result.err);
    }
    return true;
  }

  void finish(const Row& row) {
    if (row.mustBeMet && row.runs() == 0) {
      fmt::print("DEFECT: {}, {}: never met\n", conversion_.name, row.kind);
      sound_ = false;
    }
    if (static_cast<std::size_t>(row.counts[0]) < row.fewestMessages) {
      fmt::print("DEFECT: {}, {}: {} messages, {} at least\n", conversion_.name, row.kind,
                 row.counts[0], row.fewestMessages);
      sound_ = false;
    }
    if (row.runs() > 0) {
      fmt::print("{:<34} {:<64} {:>5} {:>8} {:>6} {:>7} {:>6}\n", conversion_.name, row.kind,
                 row.runs(), row.counts[0], row.counts[1], row.counts[2], row.counts[3]);
    }
    sound_ = sound_ && row.counts[3] == 0;
  }

  const Conversion& conversion_;
  RunPlan plan_;
  std::string shim_;
  std::vector<Leftovers> right_;
  bool sound_ = true;
};

/// Enters a folder with the legacy database in "in" and its packed form in "packed".
void prepareDatabase(const RunPlan& plan, const std::string& database, const fs::path& folder) {
  fs::create_directories(folder / "out");
  fs::create_directories(folder / "packed");
  fs::copy(database, folder / "in", fs::copy_options::recursive);
  fs::current_path(folder);
  RunPlan pack = plan;
  pack.arguments = {"-f", "matrices", "-p", "-s", "in", "-i", "matrices.json", "-d", "packed"};
  if (runProgram(pack).status != 0) {
    throw std::runtime_error("the database does not pack");
  }
  pack.arguments = {"-f", "logicalio",       "-p", "-s",    "packed",
                    "-i", "in/sources.json", "-d", "packed"};
  if (runProgram(pack).status != 0) {
    throw std::runtime_error("the logical sources do not pack");
  }
}

bool inject(const Conversion& conversion, const RunPlan& plan, const std::string& shim) {
  Injector injector(conversion, plan, shim);
  injector.failAllocations();
  injector.failSystemCalls();
  injector.fillDisks();
  injector.limitFileSizes();
  injector.breakStandardStreams();
  return injector.sound();
}

int run(const std::vector<std::string>& arguments) {
  if (arguments.size() < 3) {
    throw std::runtime_error("usage: inject_faults PROGRAM SHIM DATABASE [CONVERSION]");
  }
  const test::ScratchPath scratch;
  RunPlan plan;
  plan.program = fs::absolute(arguments[0]);
  const std::string shim = fs::absolute(arguments[1]);
  prepareDatabase(plan, fs::absolute(arguments[2]), scratch.path());
  fmt::print("{:<34} {:<64} {:>5} {:>8} {:>6} {:>7} {:>6}\n", "conversion", "fault", "runs",
             "message", "right", "notice", "other");
  bool sound = true;
  bool found = false;
  for (const Conversion& conversion : conversions()) {
    if (arguments.size() == 3 || arguments[3] == conversion.name) {
      found = true;
      sound = inject(conversion, plan, shim) && sound;
    }
  }
  fs::current_path("/");
  return sound && found ? 0 : 1;
}

}  // namespace
}  // namespace quenfold::faults

int main(int argc, char** argv) {
  try {
    return quenfold::faults::run({argv + 1, argv + argc});
  } catch (const std::exception& failure) {
    fmt::print(stderr, "{}\n", failure.what());
    return 1;
  }
}
