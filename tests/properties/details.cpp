#include "properties/details.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>

#include "properties/plain_json.h"

namespace quenfold::properties {
namespace {

using database::Kind;
using Names = std::vector<std::string_view>;

/// Empty where there is none.
const std::vector<PlainJson>& elementsOf(const PlainJson* list) {
  static const std::vector<PlainJson> kNone;
  return list == nullptr ? kNone : list->elements;
}

const std::vector<PlainJson>& matricesOf(const PlainJson& root) {
  const PlainJson* const config = root.find("Config");
  return elementsOf(config == nullptr ? nullptr : config->find("Matrices"));
}

std::string memberText(const PlainJson& object, std::string_view name) {
  const PlainJson* const member = object.find(name);
  return member == nullptr ? std::string() : member->text;
}

bool isOneOf(const Names& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

/// Whether the list is JSON, as whoever reads it expects.
bool isReadable(const std::string& path) {
  try {
    readPlainJson(path);
    return true;
  } catch (const std::runtime_error&) {
    return false;
  }
}

class DetailComparison {
 public:
  DetailComparison(const RoundTrip& trip, const FoundPlaces& findings)
      : trip_(trip), findings_(findings) {}

  std::vector<Difference> all() {
    const PlainJson before = readPlainJson(trip_.legacy + "/matrices.json");
    compareMatrixMembers(before);
    compareMatrixDetails(matricesOf(before),
                         matricesOf(readPlainJson(trip_.returned + "/matrices.json")));
    comparePortOrder();
    compareLists();
    compareSerials();
    for (const TableShape& shape : kTableShapes) {
      compareTable(shape);
    }
    return std::move(differences_);
  }

 private:
  void require(bool same, const std::string& what, bool named) {
    if (!same) {
      differences_.push_back({what, named});
    }
  }

  void requireHeld(const PlainJson& object, const Names& held, const std::string& path) {
    for (const auto& [name, value] : object.members) {
      require(isOneOf(held, name), fmt::format("member {}{}", path, name),
              findings_.has(Kind::kMemberIgnored, kMatrices, path + name));
    }
  }

  void compareMatrixMembers(const PlainJson& root) {
    requireHeld(root, {"Config"}, "");
    requireHeld(*root.find("Config"), {"version", "Matrices"}, "Config.");
    std::size_t position = 0;
    for (const PlainJson& matrix : matricesOf(root)) {
      const std::string path = fmt::format("Config.Matrices[{}].", ++position);
      requireHeld(matrix, {"name", "serialnumber", "id", "type", "ports"}, path);
      std::size_t portPosition = 0;
      for (const PlainJson& port : elementsOf(matrix.find("ports"))) {
        requireHeld(port, {"port", "label"}, fmt::format("{}ports[{}].", path, ++portPosition));
      }
    }
  }

  /// Those that come back, each name once.
  void compareMatrixDetails(const std::vector<PlainJson>& before,
                            const std::vector<PlainJson>& after) {
    std::set<std::string> seen;
    auto last = after.begin();
    bool inOrder = true;
    for (const PlainJson& matrix : before) {
      const std::string name = memberText(matrix, "name");
      const auto found = std::find_if(after.begin(), after.end(), [&](const PlainJson& other) {
        return memberText(other, "name") == name;
      });
      if (matrix.kind != PlainJson::Kind::kObject || found == after.end() ||
          !seen.insert(name).second) {
        continue;
      }
      inOrder = inOrder && found >= last;
      last = found;
      for (const char* const member : {"id", "type"}) {
        const std::string value = memberText(matrix, member);
        const std::string back = memberText(*found, member);
        require(value == back || (value.empty() ? "0" : value) == (back.empty() ? "0" : back),
                fmt::format("{} of matrix {}: {} -> {}", member, name, value, back),
                findings_.begins(Kind::kDetailsLost, kMatrices, name + " " + member));
      }
    }
    require(inOrder, "order of the matrices",
            findings_.has(Kind::kOrderChanged, kMatrices, "Config.Matrices"));
  }

  void comparePortOrder() {
    std::map<std::string, std::size_t> places;
    for (const MeantPort& port : trip_.before.ports) {
      places.emplace(port.name, places.size());
    }
    std::map<std::string, std::size_t> last;  // by matrix
    for (const MeantPort& port : trip_.after.ports) {
      const auto place = places.find(port.name);
      if (place != places.end()) {
        std::size_t& before = last[port.matrix.name];
        require(before <= place->second, "order of ports in " + port.matrix.name,
                findings_.has(Kind::kOrderChanged, kMatrices, port.matrix.name));
        before = place->second;
        places.erase(place);  // once more, it is an added port
      }
    }
  }

  void compareLists() {
    const Names lists = {"availableInputs.json", "availableOutputs.json", "portLabels.json",
                         "userPortLabels.json"};
    for (const std::string_view list : lists) {
      require(isReadable(trip_.returned + "/" + std::string(list)),
              fmt::format("{} is no JSON", list), findings_.any(Kind::kListUnreadable, kMatrices));
    }
  }

  void compareSerials() {
    const PlainJson devices = readPlainJson(trip_.packed + "/dbpack_deviceLabels.json");
    std::set<std::string> seen;
    for (const PlainJson& device : elementsOf(devices.find("deviceLabels"))) {
      const std::string serial = memberText(device, "serial");
      require(seen.insert(serial).second, "devices share " + serial,
              findings_.begins(Kind::kSerialShared, kMatrices, serial + ": "));
    }
  }

  void compareTable(const TableShape& shape) {
    if (trip_.after.tables.count(shape.file) == 0 || trip_.before.tables.count(shape.file) == 0) {
      return;
    }
    const PlainJson root = readPlainJson(trip_.legacy + "/" + shape.file);
    compareFrame(root, shape);
    const PlainJson& table = *root.findAnyCase(shape.tableKey);
    compareTableMembers(table, shape);
    const PlainJson returned = readPlainJson(trip_.returned + "/" + shape.file);
    const std::vector<PlainJson>& records = elementsOf(table.findAnyCase(shape.entriesKey));
    const std::vector<PlainJson>& back =
        elementsOf(returned.find(shape.tableKey)->find(shape.entriesKey));
    for (std::size_t place = 0; place < std::min(records.size(), back.size()); ++place) {
      compareRecord(shape, records[place], back[place]);
    }
    requireListedPorts(shape.file);
  }

  void compareFrame(const PlainJson& root, const TableShape& shape) {
    for (const auto& [name, value] : root.members) {
      require(name == shape.tableKey, "member " + name,
              findings_.begins(Kind::kMemberIgnored, shape.file,
                               fmt::format("{} {}", shape.file, name)));
    }
  }

  void compareTableMembers(const PlainJson& table, const TableShape& shape) {
    const auto has = [&](Kind kind, const std::string& name) {
      return findings_.has(kind, shape.file,
                           fmt::format("{} {}.{}", shape.file, shape.tableKey, name));
    };
    for (const auto& [name, value] : table.members) {
      const bool levels = name == "levelKeys" && !value.elements.empty();
      require(!levels, "level keys", has(Kind::kLevelKeysLost, name));
      require(name == "version" || name == "levelKeys" || name == shape.entriesKey,
              "member " + name,
              has(Kind::kMemberIgnored, name) || has(Kind::kFieldLost, name) ||
                  has(Kind::kLevelKeysLost, name));
    }
  }

  void compareRecord(const TableShape& shape, const PlainJson& record, const PlainJson& returned) {
    const std::string place = fmt::format("{} {} ", shape.file, memberText(returned, "id"));
    const auto isNamed = [&](Kind kind, const std::string& what) {
      return findings_.beginsAndHas(kind, shape.file, place, " " + what);
    };
    for (const auto& [name, value] : record.members) {
      require(returned.find(name) != nullptr, fmt::format("{}member {}", place, name),
              isNamed(Kind::kMemberIgnored, name));
    }
    const PlainJson* const key = record.find("key");
    require(key == nullptr || (!key->isText() && key->text == "0"), place + "key",
            isNamed(Kind::kKeyChanged, "key"));
    const std::size_t count = elementsOf(record.find(shape.portsKey)).size();
    const std::size_t back = elementsOf(returned.find(shape.portsKey)).size();
    require(count == back, fmt::format("{}: {} ports -> {}", place, count, back),
            isNamed(Kind::kEmptyPortsLost, fmt::format("{} -> {}", count, back)) ||
                isNamed(Kind::kFieldLost, shape.portsKey));
  }

  void requireListedPorts(const std::string& file) {
    for (const MeantRecord& record : trip_.before.tables.at(file)) {
      std::size_t position = 0;
      for (const std::string& text : record.ports) {
        const std::string port = fmt::format(" port {}: ", ++position);
        const auto isNamed = [&](Kind kind) {
          return findings_.beginsAndHas(kind, file, file + " ", port);
        };
        require(text.empty() || trip_.before.portsNamed.count(text) != 0,
                fmt::format("no such{}{}", port, text),
                isNamed(Kind::kPortDangling) || isNamed(Kind::kPortUnknown) ||
                    isNamed(Kind::kPortChanged));
      }
    }
  }

  const RoundTrip& trip_;
  const FoundPlaces& findings_;
  std::vector<Difference> differences_;
};

}  // namespace

std::vector<Difference> detailDifferences(const RoundTrip& trip, const FoundPlaces& findings) {
  return DetailComparison(trip, findings).all();
}

}  // namespace quenfold::properties
