#include <fmt/core.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "properties/packed_edits.h"
#include "properties/pick.h"

namespace quenfold::properties {
namespace {

using database::Kind;
using generator::Random;
using Expectations = std::vector<Expected>;

constexpr std::string_view kTree = "dbpack_matrices.json";
constexpr std::string_view kDevices = "dbpack_deviceLabels.json";
constexpr std::string_view kPortLabels = "dbpack_portLabels.json";

Expectations removeFile(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  const std::string file = pick(files, random).first;
  files.erase(file);
  return {{Kind::kFileMissing, file, file}};
}

Expectations dropDevice(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  std::vector<PlainJson>& devices = files.find(kDevices)->second.find("deviceLabels")->elements;
  if (devices.empty()) {
    return {};
  }
  const std::string id = pick(devices, random).find("id")->text;
  const auto isIt = [&](const PlainJson& device) { return device.find("id")->text == id; };
  devices.erase(std::remove_if(devices.begin(), devices.end(), isIt), devices.end());
  if (contentsOf(files, kTree).find(id) == nullptr) {
    return {};
  }
  return {{Kind::kDeviceUnknown, std::string(kTree), id}};
}

Expectations editLabelKey(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  PlainJson& labels = contentsOf(files, kPortLabels);
  if (labels.members.empty()) {
    return {};
  }
  std::string& key = pick(labels.members, random).first;
  const std::size_t place = key.find('[');
  key.insert(place == std::string::npos ? 0 : place + 1, "977");
  return {{Kind::kLabelUnused, std::string(kPortLabels), key}};
}

/// Turns a range round, or one number into a range that ends before it.
std::string reverse(PlainJson& range) {
  if (range.elements.size() == 1 || range.elements[0].text == range.elements[1].text) {
    range.elements.resize(1);
    range.elements.push_back(range.elements.front());
    addTo(range.elements.back(), -1);
  } else {
    std::swap(range.elements[0], range.elements[1]);
  }
  return fmt::format(" {} to {}", range.elements[0].text, range.elements[1].text);
}

Expectations reverseRange(PackedFiles& files, const PackedFiles& /*others*/, Random& random) {
  PlainJson& tree = contentsOf(files, kTree);
  if (tree.members.empty()) {
    return {};
  }
  auto& [device, slots] = pick(tree.members, random);
  auto& [slot, groups] = pick(slots.members, random);
  PlainJson& group = pick(groups.elements, random);
  std::vector<PlainJson>& port = group.find("port")->elements;
  std::string place = fmt::format("{}.{}.{}", device, slot, port.at(0).text);
  if (random.percent(50)) {
    place += reverse(port.at(1));
  } else {
    PlainJson& type = pick(group.find("types")->elements, random);
    place += "." + type.elements.at(0).text;
    place += reverse(type.elements.at(1));
  }
  return {{Kind::kRangeEmpty, std::string(kTree), place}};
}

}  // namespace

PlainJson& contentsOf(PackedFiles& files, std::string_view file) {
  return files.find(file)->second.members.front().second;
}

void addTo(PlainJson& number, std::int64_t more) {
  number.text = fmt::format("{}", std::stoll(number.text) + more);
}

std::vector<PackedEdit> setEdits() {
  return {
      {"a file removed", removeFile},
      {"a device removed", dropDevice},
      {"the key of a label changed", editLabelKey},
      {"a range reversed", reverseRange},
  };
}

}  // namespace quenfold::properties
