#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quenfold {

/// One device of "dbpack_deviceLabels.json".
struct DeviceLabel {
  std::string id;
  std::string label;
  std::string serial;
};

/// The member names of a device label, shared by writer and reader, in the writer's order.
inline constexpr const char* kDeviceLabelId = "id";
inline constexpr const char* kDeviceLabelText = "label";
inline constexpr const char* kDeviceLabelSerial = "serial";

/// Sorted byte-wise by key; look-ups take views.
using PortLabelMap = std::map<std::string, std::string, std::less<>>;

/// Gives the replacement for a port key's device part, or an empty text to leave the key as it is.
/// May be empty itself.
using DeviceMapper = std::function<std::string(std::string_view)>;

/// The devices in file order, duplicates kept. Throws what `readFile` and `jsonGetString` throw,
/// "parseDeviceLabels root is not object", "deviceLabels not found" or
/// "deviceLabels is not array".
std::vector<DeviceLabel> parseDeviceLabels(const std::string& path);

/// Port key to label or, with `reverse`, label to port key; of a repeated key the last value wins.
/// The mapper is asked for the part before the first "." of every port key that has one. Throws
/// what `readFile` throws, "loadPortLabels root is not object", "portLabels not found",
/// "portLabels is not object" or "portLabel entry value is not string", and a length error "too
/// many bytes of port label keys: more than 1073741824" for what the mapper puts into the keys.
PortLabelMap loadPortLabels(const std::string& path, bool reverse, const DeviceMapper& mapper);

}  // namespace quenfold
