#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "faults/conversion.h"
#include "faults/expectation.h"
#include "faults/table.h"

namespace quenfold::faults {

/// What is common to all conversions of one database.
struct Injection {
  RunPlan plan;  // the program, and that it is undisturbed
  std::string shim;
  unsigned long stride = 1;  // one allocation in so many fails, and every growth
};

/// The faults of one conversion: each way prints its rows of the table.
class Injector {
 public:
  /// Throws a runtime error when the conversion fails without any fault.
  Injector(const Conversion& conversion, const Injection& injection);

  void failAllocations();
  void failSystemCalls();
  void disturbSystemCalls();
  void fillDisks();
  void limitFileSizes();
  void breakStandardStreams();

  /// Whether every run so far ended as it had to.
  [[nodiscard]] bool sound() const { return sound_; }

 private:
  [[nodiscard]] Row row(std::string kind, bool mustBeMet = true) const;
  void failCall(std::string_view call, const std::string& reasons, const std::vector<int>& errors);
  void sweep(Row& row, Fault fault, unsigned long stride);
  void record(Row& row, const RunPlan& plan, const Expectation& expected);
  void judgeRun(Row& row, const RunPlan& plan, const RunResult& result,
                const Expectation& expected);
  void finish(const Row& row) { sound_ = printRow(row) && sound_; }

  const Conversion& conversion_;
  RunPlan plan_;
  std::string shim_;
  unsigned long stride_;
  std::vector<Leftovers> right_;
  bool sound_ = true;
};

}  // namespace quenfold::faults
