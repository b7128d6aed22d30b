// The input is the text of the packed port tree.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/files.h"
#include "input_files.h"
#include "json/access.h"
#include "json/document.h"
#include "json/label_files.h"
#include "matrices/expand.h"
#include "matrices/format.h"
#include "matrices/legacy_writer.h"
#include "matrices/packed_reader.h"
#include "target.h"

namespace quenfold {
namespace {

std::int64_t countOf(std::int32_t first, std::int32_t last) {
  return std::max<std::int64_t>(std::int64_t{last} - first + 1, 0);
}

std::int64_t portsOf(const unpacking::PortTypeGroup& group) {
  std::int64_t channels = 0;
  for (const auto& [type, range] : group.types) {
    channels += countOf(range.first, range.last);
  }
  return channels * countOf(group.first, group.last);
}

std::int64_t portsOf(const unpacking::PortTree& tree) {
  std::int64_t ports = 0;
  for (const auto& [device, slots] : tree) {
    for (const auto& [slot, groups] : slots) {
      for (const unpacking::PortTypeGroup& group : groups) {
        ports += portsOf(group);
      }
    }
  }
  return ports;
}

}  // namespace
}  // namespace quenfold

namespace quenfold::fuzz {
namespace {

void fuzzPortTree(std::string_view input) {
  std::string text(input);
  const JsonDocument document = parseJson(text);
  const JsonValue* const matrices = findMember(document, kMatricesSection);
  if (matrices == nullptr) {
    return;
  }
  const unpacking::PortTree tree = unpacking::loadPortTree(*matrices);
  const std::vector<DeviceLabel> noDevices;
  const PortLabelMap noLabels;
  const unpacking::ExpandedTree expanded = unpacking::expandPortTree(tree, noDevices, noLabels);
  require(static_cast<std::int64_t>(expanded.ports) == portsOf(tree),
          "every port and channel of the tree is written out");
  require(expanded.inputs + expanded.outputs <= expanded.ports,
          "a port is an input, an output or neither");
  const std::string path = joinPath(workFolder(), "matrices.json");
  OutputFile out(path);
  unpacking::LegacyWriter(expanded).writeMatrices(out);
  out.close();
  std::string legacyText = bytesOf("matrices.json");
  require(parseJson(legacyText).IsObject(), "the legacy text is JSON");
}

const Target kPortTree("port_tree", fuzzPortTree);

}  // namespace
}  // namespace quenfold::fuzz
