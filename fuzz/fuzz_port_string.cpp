// The input is a port string of the matrices.

#include <cstdint>
#include <string>

#include "app/text.h"
#include "matrices/port_string.h"
#include "target.h"

namespace quenfold {
namespace {

/// The parts in their order are the text, up to the channel's number.
void requireParts(std::string_view text, const SplitPort& parts) {
  std::string joined;
  for (const std::string_view part : {parts.device, parts.slot, parts.port, parts.type}) {
    joined.append(part).append(".");
  }
  joined += "ch";
  fuzz::requireEqual(text.substr(0, joined.size()), joined, "the parts are those of the text");
  std::int32_t channel = 0;
  fuzz::require(parseSigned(text.substr(joined.size()), channel, 10) && channel == parts.ch,
                "the channel is the number at the end");
}

}  // namespace
}  // namespace quenfold

namespace quenfold::fuzz {
namespace {

void fuzzPortString(std::string_view input) {
  const SplitPort parts = splitPort(input);
  requireParts(input, parts);
  const PortString port = parsePortString(parts.port);
  std::string written = port.name;
  const std::size_t place = written.find('[') + 1;
  require(place > 0 && written.compare(place, 1, "]") == 0, "a pattern has empty brackets");
  written.insert(place, std::to_string(port.id));
  require(parsePortString(written) == port, "a pattern takes its number back");
  require(classifyPortType(port.name) == classifyPortType(written),
          "the number does not matter to the direction");
}

const Target kPortString("port_string", fuzzPortString);

}  // namespace
}  // namespace quenfold::fuzz
