#pragma once

#include <array>
#include <string>

#include "faults/outcome.h"

namespace quenfold::faults {

/// One line of the table: the faults of a kind, by outcome.
struct Row {
  std::string conversion;
  std::string kind;
  bool mustBeMet = true;
  std::array<int, 4> counts{};  // by `Outcome`
};

void count(Row& row, Outcome outcome);

void printHead();

/// Prints the row when the kind was met, and a defect when it had to be and was not. Whether there
/// is no defect in the row.
bool printRow(const Row& row);

/// Says what a run with that fault came to in place of what it had to.
void printDefect(const Row& row, const std::string& fault, const Expectation& expected,
                 const RunResult& result);

}  // namespace quenfold::faults
