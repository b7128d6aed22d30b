#include "properties/compared.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace quenfold::properties {
namespace {

using database::Kind;

using PortsByName = std::map<std::string, std::vector<MeantPort>>;

PortsByName byName(const Meaning& meaning) {
  PortsByName ports;
  for (const MeantPort& port : meaning.ports) {
    ports[port.name].push_back(port);
  }
  return ports;
}

std::string withSerial(const MeantMatrix& matrix) {
  return fmt::format("{} ({})", matrix.name, matrix.serial);
}

/// Two of one name are told apart by their serial numbers.
std::string changeOf(const MeantMatrix& from, const MeantMatrix& to) {
  return from.name == to.name ? fmt::format("{} -> {}", withSerial(from), withSerial(to))
                              : fmt::format("{} -> {}", from.name, to.name);
}

class Comparison {
 public:
  Comparison(const Meaning& before, const Meaning& after, const FoundPlaces& findings)
      : before_(before), after_(after), findings_(findings) {}

  std::vector<Difference> all() {
    const PortsByName before = byName(before_);
    const PortsByName after = byName(after_);
    for (const auto& [name, ports] : before) {
      const auto found = after.find(name);
      comparePort(name, ports, found == after.end() ? std::vector<MeantPort>() : found->second);
    }
    for (const auto& [name, ports] : after) {
      const auto found = before.find(name);
      const std::size_t listed = found == before.end() ? 0 : found->second.size();
      require(ports.size() <= std::max<std::size_t>(listed, 1) && listed > 0, "added port " + name,
              findings_.has(Kind::kPortAdded, kMatrices, name));
    }
    compareMatrices();
    for (const auto& [file, records] : before_.tables) {
      compareTable(file, records);
    }
    return std::move(differences_);
  }

 private:
  void require(bool same, const std::string& what, bool named) {
    if (!same) {
      differences_.push_back({what, named});
    }
  }

  void comparePort(const std::string& name, const std::vector<MeantPort>& listed,
                   const std::vector<MeantPort>& returned) {
    require(listed.size() == 1, "repeated port " + name,
            findings_.has(Kind::kPortRepeated, kMatrices, name));
    require(!returned.empty(), "lost port " + name,
            findings_.has(Kind::kPortLost, kMatrices, name));
    if (returned.empty()) {
      return;
    }
    for (const MeantPort& port : listed) {
      const MeantPort& back = returned.front();
      require(port.label == back.label,
              fmt::format("label of port {}: {} -> {}", name, port.label, back.label),
              findings_.begins(Kind::kLabelLost, kMatrices,
                               fmt::format("{}: \"{}\"", name, port.label)));
      require(
          port.matrix == back.matrix,
          fmt::format("matrix of port {}: {} {} -> {} {}", name, port.matrix.name,
                      port.matrix.serial, back.matrix.name, back.matrix.serial),
          findings_.begins(Kind::kMatrixChanged, kMatrices, changeOf(port.matrix, back.matrix)));
    }
  }

  void compareMatrices() {
    const auto count = [](const Meaning& meaning, const MeantMatrix& matrix) {
      return std::count(meaning.matrices.begin(), meaning.matrices.end(), matrix);
    };
    for (const MeantMatrix& matrix : before_.matrices) {
      require(count(after_, matrix) == count(before_, matrix),
              fmt::format("lost matrix {} {}", matrix.name, matrix.serial),
              findings_.begins(Kind::kMatrixChanged, kMatrices, matrix.name + " -> ") ||
                  findings_.begins(Kind::kMatrixChanged, kMatrices, withSerial(matrix) + " -> "));
    }
    for (const MeantMatrix& matrix : after_.matrices) {
      require(count(before_, matrix) > 0 || hasAddedPortsOnly(matrix),
              fmt::format("added matrix {} {}", matrix.name, matrix.serial),
              findings_.ends(Kind::kMatrixChanged, kMatrices, " -> " + matrix.name) ||
                  findings_.ends(Kind::kMatrixChanged, kMatrices, " -> " + withSerial(matrix)));
    }
  }

  /// All of its ports are named, and it says nothing beyond them.
  [[nodiscard]] bool hasAddedPortsOnly(const MeantMatrix& matrix) const {
    return std::all_of(after_.ports.begin(), after_.ports.end(), [&](const MeantPort& port) {
      return !(port.matrix == matrix) || findings_.has(Kind::kPortAdded, kMatrices, port.name);
    });
  }

  void compareTable(const std::string& file, const std::vector<MeantRecord>& records) {
    const auto found = after_.tables.find(file);
    if (found == after_.tables.end()) {
      require(false, "lost table " + file, findings_.any(Kind::kReadingStops, file));
      return;
    }
    const std::vector<MeantRecord>& returned = found->second;
    require(records.size() == returned.size(), "number of records in " + file, false);
    for (std::size_t place = 0; place < std::min(records.size(), returned.size()); ++place) {
      compareRecord(file, records[place], returned[place]);
    }
  }

  void compareRecord(const std::string& file, const MeantRecord& record,
                     const MeantRecord& returned) {
    const std::string place = fmt::format("{} {} ", file, returned.id);
    require(record.id == returned.id, fmt::format("id {} -> {}", record.id, returned.id),
            isNamed({Kind::kFieldLost}, file, place));
    for (const auto& [name, value] : record.fields) {
      const std::string& back = returned.fields.at(name);
      require(
          value == back, fmt::format("{} {}: {} -> {}", place, name, value, back),
          isCut(file, value) || isNamed({Kind::kFieldLost, Kind::kCategoryLost}, file, place) ||
              ((name == "name" || name == "category") &&
               findings_.has(Kind::kIdRepeated, file, fmt::format("{} {}", file, returned.id))));
    }
    for (std::size_t i = 0; i < std::max(record.ports.size(), returned.ports.size()); ++i) {
      comparePortOf(file, place, i,
                    {i < record.ports.size() ? record.ports[i] : "",
                     i < returned.ports.size() ? returned.ports[i] : ""});
    }
  }

  /// A text that the file could have had as well and that stands for other ports now follows from
  /// what is named of those ports.
  void comparePortOf(const std::string& file, const std::string& place, std::size_t position,
                     const std::pair<std::string, std::string>& texts) {
    const std::set<std::string> meant = before_.portsOf(texts.first);
    const std::set<std::string> means = after_.portsOf(texts.second);
    const std::string port = fmt::format("port {}: ", position + 1);
    require(meant == means && meant.size() <= 1,
            fmt::format("{}{}{} -> {}", place, port, texts.first, texts.second),
            isPortNamed(file, place, port) || isNamed({Kind::kFieldLost}, file, place) ||
                isCut(file, texts.first) ||
                (meant.size() == 1 && before_.portsOf(texts.second) == meant &&
                 areNamed(meant, means)));
  }

  [[nodiscard]] bool areNamed(const std::set<std::string>& meant,
                              const std::set<std::string>& means) const {
    std::vector<std::string> others;
    std::set_symmetric_difference(meant.begin(), meant.end(), means.begin(), means.end(),
                                  std::back_inserter(others));
    return std::any_of(others.begin(), others.end(), [&](const std::string& port) {
      return findings_.has(Kind::kPortAdded, kMatrices, port) ||
             findings_.has(Kind::kPortLost, kMatrices, port) ||
             findings_.begins(Kind::kLabelLost, kMatrices, port + ": ");
    });
  }

  [[nodiscard]] bool isNamed(const std::vector<Kind>& kinds, const std::string& file,
                             const std::string& place) const {
    return std::any_of(kinds.begin(), kinds.end(),
                       [&](Kind kind) { return findings_.begins(kind, file, place); });
  }

  /// Of a text with a zero byte somewhere the file alone is named.
  [[nodiscard]] bool isCut(const std::string& file, const std::string& text) const {
    return text.find('\0') != std::string::npos &&
           findings_.has(Kind::kFieldLost, file, file + " \\u0000");
  }

  [[nodiscard]] bool isPortNamed(const std::string& file, const std::string& record,
                                 const std::string& port) const {
    const std::vector<Kind> kinds = {Kind::kPortUnknown, Kind::kPortAmbiguous, Kind::kPortChanged};
    return std::any_of(kinds.begin(), kinds.end(),
                       [&](Kind kind) { return findings_.beginsAndHas(kind, file, record, port); });
  }

  const Meaning& before_;
  const Meaning& after_;
  const FoundPlaces& findings_;
  std::vector<Difference> differences_;
};

}  // namespace

std::vector<Difference> differences(const Meaning& before, const Meaning& after,
                                    const FoundPlaces& findings) {
  return Comparison(before, after, findings).all();
}

}  // namespace quenfold::properties
