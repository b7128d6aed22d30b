#include "database/summary_json.h"

#include <string>
#include <string_view>

#include "logicalio/format.h"

namespace quenfold::database {
namespace {

using unpacking::PortTypeGroup;
using unpacking::SlotMap;

void writeText(PrettyJsonWriter& writer, const char* key, std::string_view text) {
  writer.Key(key);
  writeString(writer, text);
}

void writeCount(PrettyJsonWriter& writer, const char* key, std::uint64_t count) {
  writer.Key(key);
  writer.Uint64(count);
}

/// Members of the object that is being written.
void writeRange(PrettyJsonWriter& writer, std::int32_t first, std::int32_t last) {
  writer.Key("first");
  writer.Int(first);
  writer.Key("last");
  writer.Int(last);
}

template <typename Items, typename WriteItem>
void writeArray(PrettyJsonWriter& writer, const char* key, const Items& items,
                WriteItem writeItem) {
  writer.Key(key);
  writer.StartArray();
  for (const auto& item : items) {
    writer.StartObject();
    writeItem(item);
    writer.EndObject();
  }
  writer.EndArray();
}

void writeGroup(PrettyJsonWriter& writer, const PortTypeGroup& group) {
  const PatternParts pattern = partsOf(group.port);
  writeText(writer, "port", std::string(pattern.front).append(pattern.back));
  writeRange(writer, group.first, group.last);
  writeText(writer, "direction", directionName(group.direction));
  writeArray(writer, "types", group.types, [&writer](const auto& type) {
    writeText(writer, "type", type.first);
    writeRange(writer, type.second.first, type.second.last);
  });
}

void writeRecord(PrettyJsonWriter& writer, const DeviceLabel* record) {
  if (record != nullptr) {
    writeText(writer, "label", record->label);
    writeText(writer, "serial", record->serial);
    return;
  }
  writer.Key("label");
  writer.Null();
  writer.Key("serial");
  writer.Null();
}

void writeDevice(PrettyJsonWriter& writer, const DeviceSummary& device) {
  static const SlotMap kNoSlots;
  writeText(writer, "id", device.id);
  writeRecord(writer, device.record);
  writeCount(writer, "ports", device.ports);
  const SlotMap& slots = device.slots == nullptr ? kNoSlots : *device.slots;
  writeArray(writer, "slots", slots, [&writer](const auto& slot) {
    writeText(writer, "slot", slot.first);
    writeArray(writer, "groups", slot.second,
               [&writer](const PortTypeGroup& group) { writeGroup(writer, group); });
  });
}

void writeTable(PrettyJsonWriter& writer, const TableSummary& table) {
  writeText(writer, "file", table.file);
  writeCount(writer, "records", table.records);
  writeCount(writer, "bits", packedBits(*table.portDict));
  writer.Key("fields");
  writer.StartObject();
  for (std::size_t field = kPortFieldCount; field-- > 0;) {
    writeCount(writer, kPortFieldNames.at(field), fieldBits(*table.portDict, field));
  }
  writer.EndObject();
}

}  // namespace

JsonBuffer summaryJson(const Summary& summary) {
  JsonBuffer buffer;
  PrettyJsonWriter writer(buffer);
  writer.StartObject();
  writeText(writer, "database", formName(summary.form));
  writeCount(writer, "ports", summary.ports);
  writeCount(writer, "inputs", summary.inputs);
  writeCount(writer, "outputs", summary.outputs);
  writeCount(writer, "portLabels", summary.portLabels);
  writeArray(writer, "devices", summary.devices,
             [&writer](const DeviceSummary& device) { writeDevice(writer, device); });
  writeArray(writer, "tables", summary.tables,
             [&writer](const TableSummary& table) { writeTable(writer, table); });
  writeArray(writer, "files", summary.files, [&writer](const FileSize& file) {
    writeText(writer, "file", file.name);
    writeCount(writer, "bytes", file.bytes);
  });
  writeCount(writer, "bytes", allBytes(summary.files));
  writer.EndObject();
  buffer.Put('\n');
  return buffer;
}

}  // namespace quenfold::database
