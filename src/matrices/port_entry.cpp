#include "matrices/port_entry.h"

#include <cstddef>

#include "json/plain_run.h"

namespace quenfold::packing {
namespace {

constexpr std::string_view kBeforePort = R"(},{"port":")";
constexpr std::string_view kBetween = R"(","label":")";
constexpr std::string_view kAfterLabel = R"("})";
static_assert(kBeforePort.size() <= kScanPadding && kBetween.size() <= kScanPadding);

bool standsAt(const char* place, std::string_view mark) {
  return std::string_view(place, mark.size()) == mark;
}

std::string_view plainRunAt(const char* place) {
  return {place, static_cast<std::size_t>(plainRunEnd(place) - place)};
}

}  // namespace

std::optional<PortEntry> takeNextPortEntry(char*& place) {
  if (!standsAt(place, kBeforePort)) {
    return std::nullopt;
  }
  char* const portStart = place + kBeforePort.size();
  const std::string_view port = plainRunAt(portStart);
  char* const portEnd = portStart + port.size();
  if (!standsAt(portEnd, kBetween)) {
    return std::nullopt;
  }
  char* const labelStart = portEnd + kBetween.size();
  const std::string_view label = plainRunAt(labelStart);
  char* const labelEnd = labelStart + label.size();
  if (!standsAt(labelEnd, kAfterLabel)) {
    return std::nullopt;
  }
  *portEnd = '\0';
  *labelEnd = '\0';
  place = labelEnd + 1;
  return PortEntry{port, label};
}

}  // namespace quenfold::packing
