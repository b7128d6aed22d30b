#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "json/label_files.h"
#include "logicalio/port_dict.h"
#include "logicalio/record.h"

namespace quenfold {

/// Gives a device's label for its id, and every other text back as it is; of devices with the same
/// id the first counts. The mapper refers to the list, which must outlive it and stay unchanged.
DeviceMapper labelOfDevice(const std::vector<DeviceLabel>& devices);

/// In the dictionary, renames the devices in list order from label to id or from id to label. A
/// device not in the dictionary, and one whose new name is taken there, is left alone.
void nameDevicesById(const std::vector<DeviceLabel>& devices, PortDict& dict);
void nameDevicesByLabel(const std::vector<DeviceLabel>& devices, PortDict& dict);

/// Names and categories by record id.
using LabelMap = std::map<std::uint32_t, std::string>;
using LegacyCategoryMap = std::map<std::uint32_t, std::vector<CatEntry>>;

/// Load a "...Labels.json" and a "...LegacyCategories.json" file. Of a repeated id the last entry
/// wins. A file that cannot be read or is malformed anywhere gives an empty map and a notice on
/// standard error: names and categories may stand in the records themselves. Throw std::bad_alloc.
LabelMap parseLabelMap(const std::string& path);
LegacyCategoryMap parseLegacyCategoryMap(const std::string& path);

}  // namespace quenfold
