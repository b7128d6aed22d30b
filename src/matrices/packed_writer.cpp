// What is written: four files, each an object whose one member bears the section's name. Devices
// are named by frame ID, everything else stands in the order of the input.
//
//   dbpack_deviceLabels.json              "deviceLabels": [{"id": "<serial>", "label": "<label>",
//                                                           "serial": "<serial>"}, ...]
//   dbpack_matrices.json                  "matrices": {"<device>": {"<slot>": [<group>, ...]}, ...}
//     a group                             {"port": ["in[]", [<first>, <last>], "s"],
//                                          "types": [["<type>", [<first>, <last>]], ...]}
//     ranges                              [<first>] when both ends are equal, [] without channels
//     directions                          "s" source, "d" destination, "?" neither
//   dbpack_matricesInternalDetails.json   "matricesInternalDetails": [{"name": "<matrix>",
//                                                                      "id": 1, "type": 0}, ...]
//   dbpack_portLabels.json                "portLabels": {"<port, its serial as device>": "<label>",
//                                                        ...}

#include "matrices/packed_writer.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "app/stage_timer.h"
#include "json/format.h"
#include "matrices/format.h"

namespace quenfold::packing {
namespace {

void writeRange(PrettyJsonWriter& writer, std::int32_t first, std::int32_t last) {
  writer.StartArray();
  writer.Int(first);
  if (first != last) {
    writer.Int(last);
  }
  writer.EndArray();
}

/// The channels between the smallest and the largest are implied.
void writeChannels(PrettyJsonWriter& writer, const ChannelList& channels) {
  if (channels.empty()) {
    writer.StartArray();
    writer.EndArray();
    return;
  }
  const auto [smallest, largest] = std::minmax_element(channels.begin(), channels.end());
  writeRange(writer, *smallest, *largest);
}

void writeLayout(PrettyJsonWriter& writer, const Layout& types) {
  writer.StartArray();
  for (const TypeChannels& type : types) {
    writer.StartArray();
    writeString(writer, type.type);
    writeChannels(writer, type.channels);
    writer.EndArray();
  }
  writer.EndArray();
}

void writeGroup(PrettyJsonWriter& writer, const PortTypeGroup& group) {
  writer.StartObject();
  writer.Key(kGroupPort);
  writer.StartArray();
  writeString(writer, group.port);
  writeRange(writer, group.first, group.last);
  writeString(writer, directionText(group.direction));
  writer.EndArray();
  writer.Key(kGroupTypes);
  writeLayout(writer, *group.types);
  writer.EndObject();
}

void writeDevices(PrettyJsonWriter& writer, const MatricesModel& model) {
  writer.StartObject();
  for (const PackDevice& device : model.devices) {
    writeKey(writer, device.name);
    writer.StartObject();
    for (const PackSlot& slot : device.slots) {
      writeKey(writer, slot.name);
      writer.StartArray();
      for (const PortTypeGroup& group : slot.groups) {
        writeGroup(writer, group);
      }
      writer.EndArray();
    }
    writer.EndObject();
  }
  writer.EndObject();
}

void writeDeviceLabels(PrettyJsonWriter& writer, const MatricesModel& model) {
  writer.StartArray();
  for (const DeviceLabelEntry& entry : model.deviceLabels) {
    writer.StartObject();
    writer.Key(kDeviceLabelId);
    writeString(writer, entry.serial);
    writer.Key(kDeviceLabelText);
    writeString(writer, entry.label);
    writer.Key(kDeviceLabelSerial);
    writeString(writer, entry.serial);
    writer.EndObject();
  }
  writer.EndArray();
}

void writeInternalDetails(PrettyJsonWriter& writer, const MatricesModel& model) {
  writer.StartArray();
  for (const MatrixDetails& matrix : model.details) {
    writer.StartObject();
    writer.Key(kMatrixName);
    writeString(writer, matrix.name);
    writer.Key(kMatrixId);
    writer.Int(matrix.id);
    writer.Key(kMatrixType);
    writer.Int(matrix.type);
    writer.EndObject();
  }
  writer.EndArray();
}

void writePortLabels(PrettyJsonWriter& writer, const MatricesModel& model) {
  writer.StartObject();
  std::string key;
  for (const PortLabelEntry& entry : model.portLabels) {
    key.assign(entry.serial).append(entry.portFromDot);
    writeKey(writer, key);
    writeString(writer, entry.label);
  }
  writer.EndObject();
}

struct Section {
  const char* name;
  const char* stage;
  void (*writeContent)(PrettyJsonWriter& writer, const MatricesModel& model);
};

/// In the order in which they are built and reported.
constexpr std::array<Section, 4> kSections = {{
    {kMatricesSection, "  Created Devices Tree JSON", writeDevices},
    {kDeviceLabelsSection, "  Created deviceLabels JSON", writeDeviceLabels},
    {kInternalDetailsSection, "  Created matricesInternalDetails JSON", writeInternalDetails},
    {kPortLabelsSection, "  Created portLabels JSON", writePortLabels},
}};

}  // namespace

Sections buildSections(const MatricesModel& model) {
  Sections sections;
  for (const Section& section : kSections) {
    TimePoint stageStart = now();
    JsonBuffer text;
    PrettyJsonWriter writer(text);
    writer.StartObject();
    writer.Key(section.name);
    section.writeContent(writer, model);
    writer.EndObject();
    logElapsed(stageStart, section.stage);
    sections.emplace(section.name, std::move(text));
  }
  return sections;
}

}  // namespace quenfold::packing
