#include "faults/database.h"

#include <stdexcept>

namespace quenfold::faults {
namespace {

namespace fs = std::filesystem;

void requirePacked(const RunPlan& plan) {
  const RunResult result = runProgram(plan);
  if (result.status != 0) {
    throw std::runtime_error("the database does not pack: " + result.err);
  }
}

}  // namespace

void packDatabase(const RunPlan& plan, const fs::path& folder) {
  fs::create_directories(folder / "out");
  fs::create_directories(folder / "packed");
  fs::current_path(folder);
  RunPlan pack = plan;
  pack.arguments = {"-f", "matrices", "-p", "-s", "in", "-i", "matrices.json", "-d", "packed"};
  requirePacked(pack);
  pack.arguments = {"-f", "logicalio",       "-p", "-s",    "packed",
                    "-i", "in/sources.json", "-d", "packed"};
  requirePacked(pack);
}

}  // namespace quenfold::faults
