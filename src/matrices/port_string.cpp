#include "matrices/port_string.h"

#include <algorithm>
#include <array>

#include "app/error.h"
#include "app/key_hash.h"
#include "app/text.h"

namespace quenfold {
namespace {

// Kept on purpose: seen from the matrix, a mixer's outputs are sources and its inputs destinations.
constexpr std::array<std::string_view, 9> kSourcePrefixes = {
    "in[",     "AUXA-in[",   "AUXB-in[",    "disconnect", "passthrough",
    "layout:", "mixer-out[", "mixerd-out[", "virt-in["};
constexpr std::array<std::string_view, 7> kDestinationPrefixes = {
    "out[", "AUXA-out[", "AUXB-out[", "pip", "head", "mixer-in[", "virt-out["};

template <std::size_t Count>
bool beginsWithAny(std::string_view name, const std::array<std::string_view, Count>& prefixes) {
  return std::any_of(prefixes.begin(), prefixes.end(),
                     [name](std::string_view prefix) { return beginsWith(name, prefix); });
}

std::int32_t parseNumber(std::string_view text) {
  std::int32_t number = 0;
  if (!parseSigned(text, number, 10)) {
    throw runtimeError("PortString number error");
  }
  return number;
}

/// The text before the next "." of `rest`, which moves past it; all of it when there is none.
std::string_view takePart(std::string_view& rest) {
  const std::size_t dot = std::min(rest.find('.'), rest.size());
  const std::string_view part = rest.substr(0, dot);
  rest.remove_prefix(std::min(dot + 1, rest.size()));
  return part;
}

}  // namespace

std::int32_t parseChannel(std::string_view text) {
  if (text.size() < 3 || !beginsWith(text, kChannelPrefix)) {
    throw runtimeError("Bad ch string");
  }
  return parseNumber(text.substr(kChannelPrefix.size()));
}

SplitPort splitPort(std::string_view portText) {
  SplitPort parts;
  std::string_view rest = portText;
  parts.device = takePart(rest);
  if (parts.device.size() == portText.size()) {
    throw runtimeError("splitPort - no device.");
  }
  parts.slot = takePart(rest);
  parts.port = takePart(rest);
  parts.type = takePart(rest);
  // With a "." missing nothing is left for the channel, which then reports it.
  parts.ch = parseChannel(rest);
  return parts;
}

std::uint32_t hashOf(const PortString& port) {
  return hashOf(std::string_view(port.name)) ^ hashOf(port.id);
}

PortString parsePortString(std::string_view portPart) {
  const std::size_t open = portPart.find('[');
  if (open == std::string_view::npos) {
    throw runtimeError("PortString '[' not found");
  }
  const std::size_t close = portPart.find(']', open);
  if (close == std::string_view::npos) {
    throw runtimeError("PortString ']' not found");
  }
  PortString port;
  port.id = parseNumber(portPart.substr(open + 1));
  port.name = portPart.substr(0, open + 1);
  port.name += portPart.substr(close);
  return port;
}

Direction classifyPortType(std::string_view patternName) {
  if (beginsWithAny(patternName, kSourcePrefixes)) {
    return Direction::kSource;
  }
  if (beginsWithAny(patternName, kDestinationPrefixes)) {
    return Direction::kDestination;
  }
  return Direction::kUnknown;
}

}  // namespace quenfold
