#pragma once

#include <string>
#include <utility>
#include <vector>

#include "database/model.h"

namespace quenfold::test {

using database::Model;

/// A model of matrices only. The views in it are literals.
inline Model matricesModel(std::vector<database::Device> devices,
                           std::vector<database::Matrix> matrices,
                           std::vector<database::Port> ports) {
  Model model;
  model.devices = std::move(devices);
  model.matrices = std::move(matrices);
  model.ports = std::move(ports);
  return model;
}

/// A model with sources only.
inline Model sourcesModel(std::vector<LogicalIORecord> records) {
  Model model;
  model.tables[database::kSources] = std::move(records);
  return model;
}

inline LogicalIORecord recordOf(std::int32_t id, std::string name,
                                std::vector<std::string> ports = {}) {
  LogicalIORecord record;
  record.id = id;
  record.name = std::move(name);
  record.ports = std::move(ports);
  return record;
}

}  // namespace quenfold::test
