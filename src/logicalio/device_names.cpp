#include "logicalio/device_names.h"

#include <string_view>
#include <unordered_map>
#include <utility>

namespace quenfold {

DeviceMapper labelOfDevice(const std::vector<DeviceLabel>& devices) {
  std::unordered_map<std::string_view, const DeviceLabel*> byId;
  for (const DeviceLabel& device : devices) {
    byId.emplace(device.id, &device);
  }
  // A device's port labels mostly stand together: the last one found is tried first.
  const DeviceLabel* last = nullptr;
  return [byId = std::move(byId), last](std::string_view id) mutable -> std::string_view {
    if (last == nullptr || last->id != id) {
      const auto known = byId.find(id);
      if (known == byId.end()) {
        return id;
      }
      last = known->second;
    }
    return last->label;
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
