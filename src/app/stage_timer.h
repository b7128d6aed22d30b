#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>

namespace quenfold {

/// Set once by -v, read by every stage report.
inline bool verbose = false;

using TimePoint = std::chrono::system_clock::time_point;

inline TimePoint now() { return std::chrono::system_clock::now(); }

/// Whole milliseconds, truncated toward zero; negative when the clock was set back meanwhile.
std::int64_t millisecondsSince(TimePoint start);

/// In verbose mode writes "<label>: <milliseconds> ms" to standard error and moves `stageStart` to
/// the time after that line; otherwise does nothing at all.
void logElapsed(TimePoint& stageStart, std::string_view label);

}  // namespace quenfold
