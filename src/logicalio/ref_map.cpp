#include "logicalio/ref_map.h"

#include <fmt/core.h>

#include <iostream>
#include <utility>

#include "json/cjson_access.h"
#include "json/cjson_tree.h"

namespace VelDB {

std::uint32_t RefMap::add(std::string_view name) {
  const auto known = nameToId_.find(name);
  if (known != nameToId_.end()) {
    return known->second;
  }
  const auto id = static_cast<std::uint32_t>(size());
  nameToId_.emplace(name, id);
  idToName_[id] = name;
  return id;
}

bool RefMap::contains(std::string_view name) const {
  return nameToId_.find(name) != nameToId_.end();
}

bool RefMap::containsId(std::uint32_t id) const { return idToName_.find(id) != idToName_.end(); }

std::uint32_t RefMap::idOf(std::string_view name) const {
  const auto known = nameToId_.find(name);
  // Kept on purpose: an unknown name answers 1, although 1 may be a real id.
  return known == nameToId_.end() ? 1 : known->second;
}

const std::string* RefMap::nameOf(std::uint32_t id) const {
  const auto known = idToName_.find(id);
  return known == idToName_.end() ? nullptr : &known->second;
}

int RefMap::removeByName(std::string_view name) {
  const auto known = nameToId_.find(name);
  if (known == nameToId_.end()) {
    return 1;
  }
  idToName_.erase(known->second);
  nameToId_.erase(known);
  return 0;
}

int RefMap::removeById(std::uint32_t id) {
  const auto known = idToName_.find(id);
  if (known == idToName_.end()) {
    return 1;
  }
  nameToId_.erase(known->second);
  idToName_.erase(known);
  return 0;
}

int RefMap::rename(std::string_view from, std::string_view to) {
  const auto known = nameToId_.find(from);
  if (from == to || known == nameToId_.end() || contains(to)) {
    return 1;
  }
  const std::uint32_t id = known->second;
  nameToId_.erase(known);
  nameToId_.emplace(to, id);
  idToName_[id] = to;
  return 0;
}

int RefMap::changeId(std::uint32_t from, std::uint32_t to) {
  const auto known = idToName_.find(from);
  if (from == to || known == idToName_.end() || containsId(to)) {
    return 1;
  }
  nameToId_[known->second] = to;
  idToName_[to] = std::move(known->second);
  idToName_.erase(known);
  return 0;
}

void RefMap::renumber() {
  idToName_.clear();
  for (auto& [name, id] : nameToId_) {
    id = static_cast<std::uint32_t>(size());
    idToName_.emplace(id, name);
  }
}

void RefMap::clear() {
  nameToId_.clear();
  idToName_.clear();
}

cJSON* RefMap::toJson() const {
  cJSON* const array = quenfold::newArray();
  for (const auto& [id, name] : idToName_) {
    cJSON* const pair = quenfold::addElement(array, quenfold::newArray());
    quenfold::addElement(pair, quenfold::newNumber(id));
    quenfold::addElement(pair, quenfold::newString(name.c_str()));
  }
  return array;
}

void RefMap::fromJson(const cJSON& array) {
  clear();
  for (const cJSON* entry = array.child; entry != nullptr; entry = entry->next) {
    const cJSON* const id = cJSON_IsArray(entry) != 0 ? entry->child : nullptr;
    const char* const name = id == nullptr ? nullptr : quenfold::stringValue(id->next);
    if (name != nullptr) {
      const std::uint32_t number = quenfold::toUint32(id->valuedouble);
      nameToId_[name] = number;
      idToName_[number] = name;
    }
  }
}

void RefMap::dump(std::string_view separator) const {
  for (const auto& [id, name] : idToName_) {
    std::cout << fmt::format("{:X}={}{}", id, name, separator);
  }
  std::cout << '\n';
}

}  // namespace VelDB
