#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>
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

/// Keys and values of a file, hashed once, without a copy of their own: both are views into texts
/// that the map keeps alive. Look-ups take views; the order is of no meaning.
class PortLabelMap {
 public:
  using Entries = std::pmr::unordered_map<std::string_view, std::string_view>;

  [[nodiscard]] Entries::const_iterator find(std::string_view key) const {
    return contents_->entries.find(key);
  }
  [[nodiscard]] Entries::const_iterator begin() const { return contents_->entries.begin(); }
  [[nodiscard]] Entries::const_iterator end() const { return contents_->entries.end(); }
  [[nodiscard]] bool empty() const { return contents_->entries.empty(); }
  [[nodiscard]] std::size_t size() const { return contents_->entries.size(); }

  void reserve(std::size_t count) { contents_->entries.reserve(count); }

  /// Of a repeated key the last value counts. Both views must last as long as the map: they are
  /// literals or lie in what it keeps.
  void assign(std::string_view key, std::string_view value) {
    contents_->entries.insert_or_assign(key, value);
  }

  /// Takes over the file's text, which then lives as long as the map, wherever that is moved.
  std::string& keep(std::string text);

  /// Keeps the two in one piece.
  std::string_view keepJoined(std::string_view front, std::string_view back);

 private:
  struct Contents {
    std::pmr::monotonic_buffer_resource memory;  // freed at once
    std::string text;
    Entries entries{&memory};
  };

  std::unique_ptr<Contents> contents_ = std::make_unique<Contents>();
};

/// Gives the replacement for a port key's device part, or an empty text to leave the key as it is.
/// What it gives may be a part of what it is given, or must last until it is called again. May be
/// empty itself.
using DeviceMapper = std::function<std::string_view(std::string_view)>;

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
