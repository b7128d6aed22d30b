// The input is the two label files, see input_files.h.

#include <string>
#include <vector>

#include "app/files.h"
#include "input_files.h"
#include "json/format.h"
#include "json/label_files.h"
#include "target.h"

namespace quenfold::fuzz {
namespace {

void fuzzLabels(std::string_view input) {
  const std::string devicesName = packedFileName(kDeviceLabelsSection);
  const std::string portsName = packedFileName(kPortLabelsSection);
  placeFiles(splitInput(input), {devicesName, portsName});
  const std::string portsPath = joinPath(workFolder(), portsName);
  const PortLabelMap labelOf = loadPortLabels(portsPath, false, nullptr);
  const PortLabelMap keyOf = loadPortLabels(portsPath, true, nullptr);
  for (const auto& [key, label] : labelOf.entries()) {
    require(keyOf.find(label) != nullptr, "every label leads to a port key");
  }
  const std::vector<DeviceLabel> devices = parseDeviceLabels(joinPath(workFolder(), devicesName));
  const PortLabelMap renamed = loadPortLabels(portsPath, false, labelOfDevice(devices));
  require(renamed.size() <= labelOf.size(), "renaming devices adds no port key");
  require(loadPortLabels(portsPath, true, labelOfDevice(devices)).size() == keyOf.size(),
          "renaming devices leaves the labels as they are");
}

const Target kLabels("labels", fuzzLabels);

}  // namespace
}  // namespace quenfold::fuzz
