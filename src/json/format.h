#pragma once

#include <fmt/core.h>

#include <string>
#include <string_view>

// What the packed matrices and the label files beside them have in common, each name spelled once.
// Every section is a file of its own, holding an object whose one member bears the section's name.

namespace quenfold {

inline constexpr const char* kDeviceLabelsSection = "deviceLabels";
inline constexpr const char* kPortLabelsSection = "portLabels";

/// The members of a device label, in the writer's order.
inline constexpr const char* kDeviceLabelId = "id";
inline constexpr const char* kDeviceLabelText = "label";
inline constexpr const char* kDeviceLabelSerial = "serial";

inline std::string packedFileName(std::string_view section) {
  return fmt::format("dbpack_{}.json", section);
}

}  // namespace quenfold
