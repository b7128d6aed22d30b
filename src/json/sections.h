#pragma once

#include <fmt/core.h>

#include <string>
#include <string_view>

namespace quenfold {

/// The sections of the packed matrices: each is a file of its own, holding an object whose one
/// member bears the section's name. In ascending order, which is the order of writing.
inline constexpr const char* kDeviceLabelsSection = "deviceLabels";
inline constexpr const char* kMatricesSection = "matrices";
inline constexpr const char* kInternalDetailsSection = "matricesInternalDetails";
inline constexpr const char* kPortLabelsSection = "portLabels";

inline std::string packedFileName(std::string_view section) {
  return fmt::format("dbpack_{}.json", section);
}

}  // namespace quenfold
