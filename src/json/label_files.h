#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "app/indexed_list.h"
#include "app/key_hash.h"

namespace quenfold {

/// One device of "dbpack_deviceLabels.json".
struct DeviceLabel {
  std::string id;
  std::string label;
  std::string serial;
};

/// Keys and labels of a file in its order, without a copy of their own: they are views into texts
/// that the map keeps alive.
class PortLabelMap {
 public:
  struct Entry {
    std::string_view key;
    std::string_view label;
  };
  using Entries = IndexedList<Entry, &Entry::key>;

  /// The key's label, or null. Valid until the next `assign`.
  [[nodiscard]] const std::string_view* find(std::string_view key) const {
    const Entry* const entry = contents_->entries.find(key);
    return entry == nullptr ? nullptr : &entry->label;
  }
  [[nodiscard]] const Entries& entries() const { return contents_->entries; }
  [[nodiscard]] bool empty() const { return contents_->entries.empty(); }
  [[nodiscard]] std::size_t size() const { return contents_->entries.size(); }

  /// Of a repeated key the last label counts. Both views must last as long as the map: they are
  /// literals or lie in what it keeps.
  void assign(std::string_view key, std::string_view label) {
    contents_->entries.findOrAppend(key, [key] { return Entry{key, {}}; }).label = label;
  }

  /// Takes over the file's text, which then lives as long as the map, wherever that is moved.
  std::string& keep(std::string text);

  /// Keeps the two in one piece.
  std::string_view keepJoined(std::string_view front, std::string_view back);

 private:
  struct Contents {
    std::pmr::monotonic_buffer_resource joined;  // freed at once
    std::string text;
    Entries entries;
  };

  std::unique_ptr<Contents> contents_ = std::make_unique<Contents>();
};

/// The first device of each id. Refers to the list that it was made of, which must outlive it and
/// stay unchanged.
using DeviceIndex = std::unordered_map<std::string_view, const DeviceLabel*, TextHash>;

DeviceIndex indexById(const std::vector<DeviceLabel>& devices);

/// Gives the replacement for a port key's device part, or an empty text to leave the key as it is.
/// What it gives may be a part of what it is given, or must last until it is called again. May be
/// empty itself.
using DeviceMapper = std::function<std::string_view(std::string_view)>;

/// Gives a device's label for its id, and every other text back as it is; of devices with the same
/// id the first counts. The mapper refers to the list as the index does.
DeviceMapper labelOfDevice(const std::vector<DeviceLabel>& devices);

/// The devices in file order, duplicates kept. Throws what `readFile` and `jsonGetString` throw,
/// "parseDeviceLabels root is not object", "deviceLabels not found" or
/// "deviceLabels is not array".
std::vector<DeviceLabel> parseDeviceLabels(const std::string& path);

/// The same of the file's text.
std::vector<DeviceLabel> deviceLabelsOf(std::string text);

/// Port key to label or, with `reverse`, label to port key, each up to its first zero byte; of a
/// repeated key the last value wins. The mapper is asked for the part before the first "." of every
/// port key that has one. Throws what `readFile` throws, "loadPortLabels root is not object",
/// "portLabels not found", "portLabels is not object" or "portLabel entry value is not string", and
/// a length error "too many bytes of port label keys: more than 1073741824" for what the mapper
/// puts into the keys; of the last two the one that is met first in the file.
PortLabelMap loadPortLabels(const std::string& path, bool reverse, const DeviceMapper& mapper);

/// The same of the file's text, which the map keeps.
PortLabelMap portLabelsOf(std::string text, bool reverse, const DeviceMapper& mapper);

}  // namespace quenfold
