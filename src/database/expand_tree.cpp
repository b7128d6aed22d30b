#include "database/expand_tree.h"

#include <fmt/core.h>

#include <cstddef>
#include <stdexcept>

#include "app/error.h"
#include "matrices/port_printer.h"

namespace quenfold::database {
namespace {

bool isSpelled(const unpacking::PortTypeGroup& group) {
  std::string text;
  try {
    appendPort(text, unpacking::splitPattern(group.port), group.first);
  } catch (const std::runtime_error&) {
    return false;
  }
  return true;
}

/// The port with a point and a colon behind it; empty when its first number has a name.
std::string faultyPort(const unpacking::PortTree& tree) {
  for (const auto& [device, slots] : tree) {
    for (const auto& [slot, groups] : slots) {
      for (const unpacking::PortTypeGroup& group : groups) {
        if (!isSpelled(group)) {
          return fmt::format("{}.{}.{}: ", device, slot, patternText(group));
        }
      }
    }
  }
  return {};
}

}  // namespace

std::string patternText(const unpacking::PortTypeGroup& group) {
  std::string text = group.port;
  const std::size_t place = text.find("[{}");
  return place == std::string::npos ? text : text.erase(place + 1, 2);
}

unpacking::ExpandedTree expandTree(const PackedDatabase& database, const PortLabelMap& labels) {
  try {
    return unpacking::expandPortTree(database.tree, database.devices, labels);
  } catch (const std::length_error& failure) {
    throw lengthError("{}: {}", database.treePath, failure.what());
  } catch (const std::runtime_error& failure) {
    throw runtimeError("{}: {}{}", database.treePath, faultyPort(database.tree), failure.what());
  }
}

}  // namespace quenfold::database
