// Pieces of the logical IO conversions.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "json/cjson_tree.h"
#include "logicalio/bit_packing.h"
#include "logicalio/hash.h"
#include "logicalio/port_dict.h"
#include "logicalio/port_key.h"
#include "piece_inputs.h"

namespace quenfold::bench {
namespace {

void countItems(benchmark::State& state, std::size_t items) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items));
}

void countBytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void hashText(benchmark::State& state) {
  const std::string& text = pieceInputs().sources;
  while (state.KeepRunning()) {
    VelDB::Hash hash;
    hash.hashAdd(text);
    benchmark::DoNotOptimize(hash.value());
  }
  countBytes(state, text.size());
}
BENCHMARK(hashText);

void scanPortKeys(benchmark::State& state) {
  const std::vector<std::string>& keys = pieceInputs().portKeys;
  while (state.KeepRunning()) {
    for (const std::string& key : keys) {
      benchmark::DoNotOptimize(scanPortKey(key));
    }
  }
  countItems(state, keys.size());
}
BENCHMARK(scanPortKeys);

std::vector<std::string> registerAll(PortDict& dict) {
  std::vector<std::string> idKeys;
  for (const std::string& key : pieceInputs().portKeys) {
    dict.registerPortKey(key, idKeys.emplace_back());
  }
  return idKeys;
}

void registerPortKeys(benchmark::State& state) {
  while (state.KeepRunning()) {
    PortDict dict;
    benchmark::DoNotOptimize(registerAll(dict));
  }
  countItems(state, pieceInputs().portKeys.size());
}
BENCHMARK(registerPortKeys);

void packIdKeys(benchmark::State& state) {
  PortDict dict;
  const std::vector<std::string> idKeys = registerAll(dict);
  dict.computeWidths();
  while (state.KeepRunning()) {
    for (const std::string& idKey : idKeys) {
      benchmark::DoNotOptimize(dict.packIdKey(idKey));
    }
  }
  countItems(state, idKeys.size());
}
BENCHMARK(packIdKeys);

void unpackPortKeys(benchmark::State& state) {
  PortDict dict;
  std::vector<std::uint64_t> values;
  const std::vector<std::string> idKeys = registerAll(dict);
  dict.computeWidths();
  values.reserve(idKeys.size());
  for (const std::string& idKey : idKeys) {
    values.push_back(dict.packIdKey(idKey));
  }
  while (state.KeepRunning()) {
    for (const std::uint64_t value : values) {
      benchmark::DoNotOptimize(dict.unpackToPortKey(value));
    }
  }
  countItems(state, values.size());
}
BENCHMARK(unpackPortKeys);

void bitPackingString(benchmark::State& state) {
  constexpr const char* kText =
      "${device,9}.${slot,4}.${port_prefix,5}[#{port_id,7}].${type,3}.ch#{ch,4}";
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(writeBitPacking(parseBitPacking(kText)));
  }
}
BENCHMARK(bitPackingString);

void cjsonParse(benchmark::State& state) {
  const std::string& text = pieceInputs().sources;
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(parseCJson(text).get());
  }
  countBytes(state, text.size());
}
BENCHMARK(cjsonParse);

}  // namespace
}  // namespace quenfold::bench
