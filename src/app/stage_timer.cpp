#include "app/stage_timer.h"

#include <iostream>

namespace quenfold {

std::int64_t millisecondsSince(TimePoint start) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(now() - start).count();
}

void logElapsed(TimePoint& stageStart, std::string_view label) {
  if (!verbose) {
    return;
  }
  std::cerr << label << ": " << millisecondsSince(stageStart) << " ms\n";
  stageStart = now();
}

}  // namespace quenfold
