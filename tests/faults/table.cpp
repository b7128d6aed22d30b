#include "faults/table.h"

#include <fmt/core.h>

#include <numeric>

namespace quenfold::faults {

void count(Row& row, Outcome outcome) { ++row.counts.at(static_cast<std::size_t>(outcome)); }

void printHead() {
  fmt::print("{:<34} {:<64} {:>5} {:>8} {:>6} {:>7} {:>6}\n", "conversion", "fault", "runs",
             "message", "right", "notice", "other");
}

bool printRow(const Row& row) {
  const auto& [messages, right, notices, others] = row.counts;
  const int runs = messages + right + notices + others;
  if (runs > 0) {
    fmt::print("{:<34} {:<64} {:>5} {:>8} {:>6} {:>7} {:>6}\n", row.conversion, row.kind, runs,
               messages, right, notices, others);
  } else if (row.mustBeMet) {
    fmt::print("DEFECT: {}, {}: never met\n", row.conversion, row.kind);
  }
  return others == 0 && (runs > 0 || !row.mustBeMet);
}

void printDefect(const Row& row, const std::string& fault, const Expectation& expected,
                 const RunResult& result) {
  fmt::print(
      "DEFECT: {}, {} [{}]: expected \"{}\" after the notices\n{}"
      "but got status {}, signal {}, standard error\n{}\n",
      row.conversion, row.kind, fault, expected.message, expected.notices,
      result.status.value_or(-1), result.signal, result.err);
}

}  // namespace quenfold::faults
