// Pieces of the matrices conversions and of the label files.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "json/access.h"
#include "json/document.h"
#include "json/label_files.h"
#include "matrices/pack_tree.h"
#include "matrices/packed_reader.h"
#include "matrices/port_string.h"
#include "matrices/unpack.h"
#include "piece_inputs.h"

namespace quenfold::bench {
namespace {

using packing::DeviceList;

void countItems(benchmark::State& state, std::size_t items) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items));
}

void countPorts(benchmark::State& state) { countItems(state, pieceInputs().portKeys.size()); }

/// With the copy of the text, which parsing consumes.
void jsonParse(benchmark::State& state) {
  const std::string& text = pieceInputs().matrices;
  while (state.KeepRunning()) {
    std::string consumed = text;
    benchmark::DoNotOptimize(parseJson(consumed).IsNull());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(jsonParse);

void splitPorts(benchmark::State& state) {
  while (state.KeepRunning()) {
    for (const std::string& key : pieceInputs().portKeys) {
      benchmark::DoNotOptimize(splitPort(key));
    }
  }
  countPorts(state);
}
BENCHMARK(splitPorts);

void parsePortStrings(benchmark::State& state) {
  std::vector<SplitPort> ports;
  for (const std::string& key : pieceInputs().portKeys) {
    ports.push_back(splitPort(key));
  }
  while (state.KeepRunning()) {
    for (const SplitPort& port : ports) {
      benchmark::DoNotOptimize(parsePortString(port.port));
    }
  }
  countPorts(state);
}
BENCHMARK(parsePortStrings);

DeviceList treeOfAll() {
  DeviceList devices;
  packing::PortCursor cursor;
  for (const std::string& key : pieceInputs().portKeys) {
    addPort(devices, cursor, key);
  }
  return devices;
}

/// With the splitting.
void insertPorts(benchmark::State& state) {
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(treeOfAll());
  }
  countPorts(state);
}
BENCHMARK(insertPorts);

void consolidateSlots(benchmark::State& state) {
  DeviceList devices = treeOfAll();
  while (state.KeepRunning()) {
    for (packing::PackDevice& device : devices) {
      for (packing::PackSlot& slot : device.slots) {
        consolidate(slot);
      }
    }
  }
  countPorts(state);
}
BENCHMARK(consolidateSlots);

void loadTree(benchmark::State& state) {
  std::string text = pieceInputs().packedMatrices;
  const JsonDocument document = parseJson(text);
  const JsonValue& root = *findMember(document, "matrices");
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(unpacking::loadPortTree(root));
  }
  countPorts(state);
}
BENCHMARK(loadTree);

/// The whole conversion to one file: loading, writing every range out, the text.
void expandTree(benchmark::State& state) {
  const PieceInputs& inputs = pieceInputs();
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(
        convertPackedMatrices(inputs.folder, {"matrices.json"}, inputs.folder));
  }
  countPorts(state);
}
BENCHMARK(expandTree);

void loadLabels(benchmark::State& state) {
  const std::string path = pieceInputs().folder + "dbpack_portLabels.json";
  std::size_t labels = 0;
  while (state.KeepRunning()) {
    labels = loadPortLabels(path, state.range(0) != 0, nullptr).size();
  }
  countItems(state, labels);
}
BENCHMARK(loadLabels)->ArgName("reverse")->Arg(0)->Arg(1);

}  // namespace
}  // namespace quenfold::bench
