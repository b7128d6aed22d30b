#pragma once

#include <vector>

#include "json/label_files.h"
#include "logicalio/port_dict.h"

namespace quenfold {

/// Gives a device's label for its id, and every other text back as it is; of devices with the same
/// id the first counts. The mapper refers to the list, which must outlive it and stay unchanged.
DeviceMapper labelOfDevice(const std::vector<DeviceLabel>& devices);

/// In the dictionary, renames the devices in list order from label to id or from id to label. A
/// device not in the dictionary, and one whose new name is taken there, is left alone.
void nameDevicesById(const std::vector<DeviceLabel>& devices, PortDict& dict);
void nameDevicesByLabel(const std::vector<DeviceLabel>& devices, PortDict& dict);

}  // namespace quenfold
