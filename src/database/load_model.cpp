#include "database/load_model.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "app/error.h"
#include "app/files.h"
#include "database/expand_tree.h"
#include "database/legacy_model.h"
#include "database/unheard.h"
#include "logicalio/legacy_reader.h"
#include "logicalio/port_dict.h"
#include "logicalio/port_key.h"
#include "matrices/expand.h"
#include "matrices/unpacked_port.h"

namespace quenfold::database {
namespace {

using unpacking::ExpandedTree;
using unpacking::MatrixEntry;

/// The dictionary gave the id when the port was read.
std::string_view nameIn(const VelDB::RefMap& map, std::uint32_t id) { return *map.nameOf(id); }

std::string keyOf(const PortDict& dict, const std::optional<PortKeyIds>& port) {
  if (!port) {
    return {};
  }
  return printPortKey({nameIn(dict.device, port->device), nameIn(dict.slot, port->slot),
                       nameIn(dict.port_prefix, port->port_prefix),
                       static_cast<std::int32_t>(port->port_id), nameIn(dict.type, port->type),
                       static_cast<std::int32_t>(port->ch)});
}

/// The records before their ports are packed into numbers, which may be too narrow.
std::vector<LogicalIORecord> recordsOf(const LegacyTable& table, const PortLabelMap& portKeys) {
  PackedModel model(unheard());
  parseLegacyTable(*table.contents, *table.kind, portKeys, model);
  std::vector<LogicalIORecord> records;
  records.reserve(model.records.size());
  for (PackRecord& record : model.records) {
    records.push_back(std::move(record.fields));
    for (const std::optional<PortKeyIds>& port : record.ports) {
      records.back().ports.push_back(keyOf(model.portDict, port));
    }
  }
  return records;
}

PackedSet packWhole(const LegacyDatabase& legacy) {
  PackedSet set = packInMemory(legacy);
  if (!set.stops.empty()) {
    const ReadingStop& stop = set.stops.front();
    throw runtimeError("{}: {}: {}", joinPath(legacy.folder, stop.file), stop.place, stop.message);
  }
  return set;
}

/// Lists the ports of an expanded tree, all texts spelled into the model's memory.
class TreeLister {
 public:
  TreeLister(const ExpandedTree& expanded, Model& model)
      : expanded_(expanded), model_(model), printer_(expanded.longestName) {
    model.ports.reserve(expanded.ports);
  }

  void list(const std::string& name, const MatrixEntry& matrix) {
    const auto place = static_cast<std::uint32_t>(model_.matrices.size());
    model_.matrices.push_back({kept(name), kept(matrix.serialnumber)});
    for (const unpacking::ExpandedBlock* const block : matrix.blocks) {
      forEachPort(expanded_, *block, printer_, [&](const unpacking::UnpackedPort& port) {
        model_.ports.push_back({kept(port.name), kept(ownLabel(port.label, port.name)), place});
      });
    }
  }

  std::string_view kept(std::string_view text) {
    auto* const copy = static_cast<char*>(model_.spelled->allocate(text.size(), 1));
    std::copy(text.begin(), text.end(), copy);
    return {copy, text.size()};
  }

 private:
  const ExpandedTree& expanded_;
  Model& model_;
  unpacking::PortPrinter printer_;
};

}  // namespace

Model modelOf(LegacyDatabase legacy) {
  const PackedSet set = packWhole(legacy);
  Model model;
  model.devices = set.devices;
  listPorts(legacy.matrices, model);
  for (const Table table : kTables) {
    if (legacy.tables.at(table)) {
      model.tables.at(table) = recordsOf(*legacy.tables.at(table), set.portKeys);
    }
  }
  model.text = std::move(legacy.matrices.text);
  return model;
}

PackedDatabase packedFormOf(const LegacyDatabase& legacy) {
  return loadPackedDatabase(packWhole(legacy).texts, {});
}

Model modelOf(const PackedDatabase& packed) {
  const ExpandedTree expanded = expandTree(packed, packed.portLabels);
  Model model;
  TreeLister lister(expanded, model);
  for (const DeviceLabel& device : packed.devices) {
    model.devices.push_back({lister.kept(device.label), lister.kept(device.serial)});
  }
  for (const auto& [name, matrix] : expanded.matrices) {
    lister.list(name, matrix);
  }
  for (const Table table : kTables) {
    if (packed.tables.at(table)) {
      model.tables.at(table) = packed.tables.at(table)->records;
    }
  }
  return model;
}

}  // namespace quenfold::database
