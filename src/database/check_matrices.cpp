#include "database/check_matrices.h"

#include <fmt/format.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "app/key_hash.h"
#include "database/expand_tree.h"
#include "database/legacy_model.h"
#include "json/access.h"
#include "json/plain_run.h"
#include "matrices/expand.h"
#include "matrices/unpacked_port.h"

namespace quenfold::database {
namespace {

using unpacking::ExpandedBlock;
using unpacking::ExpandedTree;
using unpacking::UnpackedPort;

/// The lists put together by hand do not escape any character.
bool needsEscape(std::string_view text) { return plainRunLength(text) < text.size(); }

/// Goes through the ports as unpacking writes them.
class ReturnedPorts {
 public:
  ReturnedPorts(const ExpandedTree& expanded, KnownPorts& ports, Findings& findings)
      : expanded_(expanded), ports_(ports), findings_(findings), printer_(expanded.longestName) {}

  void visitAll() {
    for (const auto& [name, matrix] : expanded_.matrices) {
      inOrder_ = true;
      last_ = 0;
      for (const ExpandedBlock* const block : matrix.blocks) {
        requireReadable(block->device.serial);
        forEachPort(expanded_, *block, printer_, [&](const UnpackedPort& port) { visit(port); });
      }
      if (!inOrder_) {
        findings_.add(Kind::kOrderChanged, kMatricesFile, [&name = name] { return name; });
      }
      ++matrix_;
    }
  }

 private:
  void requireReadable(std::string_view text) {
    if (needsEscape(text)) {
      findings_.add(Kind::kListUnreadable, kMatricesFile, [&] { return std::string(text); });
    }
  }

  void visit(const UnpackedPort& port) {
    requireReadable(port.name);
    requireReadable(port.label);
    KnownPort* const known = ports_.find(port.name);
    if (known == nullptr || known->returned) {
      findings_.add(Kind::kPortAdded, kMatricesFile, [&] { return std::string(port.name); });
      return;
    }
    known->returned = true;
    known->matrix = matrix_;
    known->label = ownLabel(port.label, port.name);
    inOrder_ = inOrder_ && known->listing >= last_;
    last_ = known->listing;
  }

  const ExpandedTree& expanded_;
  KnownPorts& ports_;
  Findings& findings_;
  unpacking::PortPrinter printer_;
  std::uint32_t matrix_ = 0;
  std::uint32_t last_ = 0;  // the place of the port before
  bool inOrder_ = true;
};

/// Compares what the file lists with what comes back.
class Comparison {
 public:
  Comparison(const Model& model, const ExpandedTree& expanded, Findings& findings)
      : model_(model), findings_(findings) {
    for (const auto& [name, matrix] : expanded.matrices) {
      returned_.push_back({name, matrix.serialnumber});
    }
  }

  void compare(const Port& listed, const KnownPort& known) {
    if (!known.returned) {
      findings_.add(Kind::kPortLost, kMatricesFile, [&] { return std::string(listed.name); });
      return;
    }
    if (listed.label != known.label) {
      findings_.add(Kind::kLabelLost, kMatricesFile, [&] { return labelPlace(listed, known); });
    }
    const Pair pair(listed.matrix, known.matrix);
    if (pair != lastPair_) {
      lastPair_ = pair;
      if (!sameMatrix(pair)) {
        moved_.insert(pair);
      }
    }
  }

  /// Once all ports are compared.
  void compareMatrices(const JsonValue& matrices) {
    for (const auto& [from, to] : moved_) {
      addChange(from, returned_.at(to));
    }
    Positions positions;
    for (const Matrix& matrix : returned_) {
      positions.emplace(matrix.name, static_cast<std::uint32_t>(positions.size()));
    }
    std::uint32_t place = 0;
    for (const JsonValue& matrix : matrices.GetArray()) {
      if (matrix.IsObject()) {
        compareMatrix(place++, matrix, positions);
      }
    }
    if (!matricesInOrder_) {
      findings_.add(Kind::kOrderChanged, kMatricesFile,
                    [] { return fmt::format("{}.{}", kConfig, kMatrices); });
    }
  }

 private:
  using Pair = std::pair<std::uint32_t, std::uint32_t>;  // a matrix of the file, a returned one
  using Positions = std::unordered_map<std::string_view, std::uint32_t, TextHash>;

  static std::string labelPlace(const Port& listed, const KnownPort& known) {
    std::string place = fmt::format("{}: \"{}\"", listed.name, listed.label);
    return known.label.empty() ? place : place + fmt::format(" -> \"{}\"", known.label);
  }

  [[nodiscard]] bool sameMatrix(const Pair& pair) const {
    const Matrix& from = model_.matrices.at(pair.first);
    const Matrix& to = returned_.at(pair.second);
    return from.name == to.name && from.serial == to.serial;
  }

  /// The serial number tells apart what has one name.
  static std::string placeOf(const Matrix& matrix, const Matrix& other) {
    return matrix.name == other.name ? fmt::format("{} ({})", matrix.name, matrix.serial)
                                     : std::string(matrix.name);
  }

  void addMatrix(std::uint32_t place, const std::string& from, const std::string& to) {
    named_.insert(place);
    findings_.add(Kind::kMatrixChanged, kMatricesFile,
                  [&] { return fmt::format("{} -> {}", from, to); });
  }

  void addChange(std::uint32_t place, const Matrix& to) {
    const Matrix& from = model_.matrices.at(place);
    addMatrix(place, placeOf(from, to), placeOf(to, from));
  }

  void compareMatrix(std::uint32_t place, const JsonValue& value, const Positions& positions) {
    const Matrix& matrix = model_.matrices.at(place);
    const auto found = positions.find(matrix.name);
    const bool repeated = !seen_.insert(matrix.name).second;
    if (found == positions.end() || repeated) {
      if (named_.count(place) == 0) {
        addMatrix(place, std::string(matrix.name), "nothing");
      }
      return;
    }
    if (!sameMatrix({place, found->second}) && moved_.count({place, found->second}) == 0) {
      addChange(place, returned_.at(found->second));
    }
    matricesInOrder_ = matricesInOrder_ && found->second >= lastPosition_;
    lastPosition_ = found->second;
    compareDetails(value, matrix.name, found->second);
  }

  void compareDetails(const JsonValue& value, std::string_view name, std::uint32_t position) {
    const std::int32_t id = jsonGetInt(value, kMatrixId);
    if (id != static_cast<std::int64_t>(position)) {
      findings_.add(Kind::kDetailsLost, kMatricesFile,
                    [&] { return fmt::format("{} {} {} -> {}", name, kMatrixId, id, position); });
    }
    const JsonValue* const type = findMember(value, kMatrixType);
    if (type != nullptr && !(type->IsInt() && type->GetInt() == 0)) {
      findings_.add(Kind::kDetailsLost, kMatricesFile,
                    [&] { return fmt::format("{} {}", name, kMatrixType); });
    }
  }

  const Model& model_;
  Findings& findings_;
  std::vector<Matrix> returned_;
  Pair lastPair_{UINT32_MAX, UINT32_MAX};
  std::set<Pair> moved_;
  std::set<std::uint32_t> named_;
  std::set<std::string_view> seen_;
  std::uint32_t lastPosition_ = 0;
  bool matricesInOrder_ = true;
};

/// The places in the model of the ports that it has already.
std::vector<std::uint32_t> noteKnown(const Model& model, KnownPorts& ports, Findings& findings) {
  std::vector<std::uint32_t> repeated;
  std::set<std::string_view> told;
  std::uint32_t place = 0;
  for (const Port& port : model.ports) {
    const KnownPort& known = ports.findOrAppend(port.name, [&] {
      return KnownPort{port.name, place, false, 0, {}};
    });
    if (known.listing != place) {
      repeated.push_back(place);
      if (told.insert(port.name).second) {
        findings.add(Kind::kPortRepeated, kMatricesFile, [&] { return std::string(port.name); });
      }
    }
    ++place;
  }
  return repeated;
}

}  // namespace

void checkMatrices(const MatricesContext& context, KnownPorts& ports, Findings& findings) {
  const auto& [legacy, model, packed] = context;
  const std::vector<std::uint32_t> repeated = noteKnown(model, ports, findings);
  const ExpandedTree expanded = expandTree(packed, packed.portLabels);
  ReturnedPorts(expanded, ports, findings).visitAll();
  Comparison comparison(model, expanded, findings);
  for (const KnownPort& known : ports) {
    comparison.compare(model.ports.at(known.listing), known);
  }
  for (const std::uint32_t place : repeated) {
    comparison.compare(model.ports.at(place), *ports.find(model.ports.at(place).name));
  }
  comparison.compareMatrices(*legacy.matrices);
}

void checkSerials(const std::vector<Device>& devices, Findings& findings) {
  std::map<std::string_view, std::vector<std::string_view>> bySerial;
  for (const Device& device : devices) {
    bySerial[device.serial].push_back(device.label);
  }
  for (const auto& [serial, labels] : bySerial) {
    if (labels.size() > 1) {
      findings.add(Kind::kSerialShared, kMatricesFile, [&serial = serial, &labels = labels] {
        return fmt::format("{}: {}", serial, fmt::join(labels, ", "));
      });
    }
  }
}

}  // namespace quenfold::database
