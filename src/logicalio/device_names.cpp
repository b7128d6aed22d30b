#include "logicalio/device_names.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace quenfold {

DeviceMapper labelOfDevice(const std::vector<DeviceLabel>& devices) {
  std::unordered_map<std::string_view, std::string_view> labels;
  for (const DeviceLabel& device : devices) {
    labels.emplace(device.id, device.label);
  }
  return [labels = std::move(labels)](std::string_view device) {
    const auto known = labels.find(device);
    return known == labels.end() ? device : known->second;
  };
}

void nameDevicesById(const std::vector<DeviceLabel>& devices, PortDict& dict) {
  for (const DeviceLabel& device : devices) {
    dict.renameDevice(device.label, device.id);
  }
}

void nameDevicesByLabel(const std::vector<DeviceLabel>& devices, PortDict& dict) {
  for (const DeviceLabel& device : devices) {
    dict.renameDevice(device.id, device.label);
  }
}

}  // namespace quenfold
