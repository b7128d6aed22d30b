#include "database/difference.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

#include "database/pairing.h"
#include "logicalio/format.h"
#include "matrices/format.h"

namespace quenfold::database {
namespace {

/// What is called by one of its texts, and what it is to have one more or one less of them.
template <typename Item>
struct Naming {
  std::string_view Item::*name;
  DifferenceKind added;
  DifferenceKind removed;
};

constexpr Naming<Device> kDeviceNaming = {&Device::label, DifferenceKind::kDeviceAdded,
                                          DifferenceKind::kDeviceRemoved};
constexpr Naming<Matrix> kMatrixNaming = {&Matrix::name, DifferenceKind::kMatrixAdded,
                                          DifferenceKind::kMatrixRemoved};
constexpr Naming<Port> kPortNaming = {&Port::name, DifferenceKind::kPortAdded,
                                      DifferenceKind::kPortRemoved};

struct RecordText {
  std::string LogicalIORecord::*text;
  DifferenceKind changed;
};

constexpr std::array<RecordText, 3> kRecordTexts = {
    {{&LogicalIORecord::name, DifferenceKind::kRecordNameChanged},
     {&LogicalIORecord::tally, DifferenceKind::kRecordTallyChanged},
     {&LogicalIORecord::description, DifferenceKind::kRecordDescriptionChanged}}};

std::string_view portAt(const LogicalIORecord& record, std::size_t position) {
  return position < record.ports.size() ? std::string_view(record.ports[position])
                                        : std::string_view();
}

std::string categoryAt(const LogicalIORecord& record, std::size_t position) {
  return position < record.categories.size() ? catEntryText(record.categories[position])
                                             : std::string();
}

class Comparison {
 public:
  Comparison(const Model& from, const Model& to) : from_(from), to_(to) {}

  void compareMatricesFiles() {
    compareNamed(from_.devices, to_.devices, kDeviceNaming,
                 [this](const Device& before, const Device& after) {
                   addChange(DifferenceKind::kDeviceSerialChanged,
                             {kMatricesFile, after.label, before.serial, after.serial});
                 });
    compareNamed(from_.matrices, to_.matrices, kMatrixNaming,
                 [this](const Matrix& before, const Matrix& after) {
                   addChange(DifferenceKind::kMatrixSerialChanged,
                             {kMatricesFile, after.name, before.serial, after.serial});
                 });
    compareNamed(from_.ports, to_.ports, kPortNaming,
                 [this](const Port& before, const Port& after) {
                   addChange(DifferenceKind::kPortLabelChanged,
                             {kMatricesFile, after.name, before.label, after.label});
                   addChange(DifferenceKind::kPortMatrixChanged,
                             {kMatricesFile, after.name, from_.matrices[before.matrix].name,
                              to_.matrices[after.matrix].name});
                 });
  }

  void compareTables() {
    for (const Table table : kTables) {
      const auto& before = from_.tables.at(table);
      const auto& after = to_.tables.at(table);
      file_ = kTableFiles.at(table);
      if (before && after) {
        compareRecords(*before, *after);
      } else if (before || after) {
        add(after ? DifferenceKind::kTableAdded : DifferenceKind::kTableRemoved,
            {file_, file_, {}, {}});
      }
    }
  }

  Differences take() { return std::move(found_); }

 private:
  void add(DifferenceKind kind, const Difference& difference) {
    found_.byKind.at(static_cast<std::size_t>(kind)).push_back(difference);
  }

  void addChange(DifferenceKind kind, const Difference& change) {
    if (change.from != change.to) {
      add(kind, change);
    }
  }

  template <typename Item, typename WhenBoth>
  void compareNamed(const std::vector<Item>& from, const std::vector<Item>& to,
                    const Naming<Item>& naming, WhenBoth whenBoth) {
    const auto addOne = [this](DifferenceKind kind, std::string_view name) {
      add(kind, {kMatricesFile, name, {}, {}});
    };
    forEachPair(
        from, to, naming.name,
        PairVisitor{whenBoth, [&](const Item& after) { addOne(naming.added, after.*naming.name); },
                    [&](const Item& before) { addOne(naming.removed, before.*naming.name); }});
  }

  void compareRecords(const std::vector<LogicalIORecord>& from,
                      const std::vector<LogicalIORecord>& to) {
    const auto addOne = [this](DifferenceKind kind, const LogicalIORecord& record) {
      add(kind, {file_, keep(placeOf(record)), {}, {}});
    };
    const auto compareBoth = [this](const LogicalIORecord& before, const LogicalIORecord& after) {
      compareFields(before, after);
      comparePorts(before, after);
      compareCategories(before, after);
    };
    forEachPair(
        from, to, &LogicalIORecord::id,
        PairVisitor{compareBoth,
                    [&](const auto& after) { addOne(DifferenceKind::kRecordAdded, after); },
                    [&](const auto& before) { addOne(DifferenceKind::kRecordRemoved, before); }});
  }

  void compareFields(const LogicalIORecord& before, const LogicalIORecord& after) {
    for (const auto& [text, changed] : kRecordTexts) {
      if (before.*text != after.*text) {
        add(changed, {file_, keep(placeOf(before)), before.*text, after.*text});
      }
    }
    if (before.redirect != after.redirect) {
      add(DifferenceKind::kRecordRedirectChanged,
          {file_, keep(placeOf(before)), keep(std::to_string(before.redirect)),
           keep(std::to_string(after.redirect))});
    }
  }

  void comparePorts(const LogicalIORecord& before, const LogicalIORecord& after) {
    const std::size_t count = std::max(before.ports.size(), after.ports.size());
    for (std::size_t position = 0; position < count; ++position) {
      const std::string_view from = portAt(before, position);
      const std::string_view to = portAt(after, position);
      if (from != to) {
        add(DifferenceKind::kRecordPortChanged,
            {file_, keep(placeOf(before, "port", position)), from, to});
      }
    }
  }

  void compareCategories(const LogicalIORecord& before, const LogicalIORecord& after) {
    for (std::size_t position = 0; position < kLegacyCategoryCount; ++position) {
      const std::string from = categoryAt(before, position);
      const std::string to = categoryAt(after, position);
      if (from != to) {
        add(DifferenceKind::kRecordCategoryChanged,
            {file_, keep(placeOf(before, "category", position)), keep(from), keep(to)});
      }
    }
  }

  [[nodiscard]] std::string placeOf(const LogicalIORecord& record) const {
    return fmt::format("{} {} \"{}\"", file_, record.id, record.name);
  }

  [[nodiscard]] std::string placeOf(const LogicalIORecord& record, std::string_view member,
                                    std::size_t position) const {
    return fmt::format("{} {} {}", placeOf(record), member, position + 1);
  }

  /// The text in the memory of what was found.
  std::string_view keep(std::string_view text) {
    auto* const kept = static_cast<char*>(found_.spelled->allocate(text.size(), alignof(char)));
    std::copy(text.begin(), text.end(), kept);
    return {kept, text.size()};
  }

  const Model& from_;
  const Model& to_;
  std::string_view file_;  // of the table that is compared
  Differences found_;
};

}  // namespace

bool isEmpty(const Differences& differences) {
  return std::all_of(differences.byKind.begin(), differences.byKind.end(),
                     [](const std::vector<Difference>& ofKind) { return ofKind.empty(); });
}

Differences compare(const Model& from, const Model& to) {
  Comparison comparison(from, to);
  comparison.compareMatricesFiles();
  comparison.compareTables();
  return comparison.take();
}

}  // namespace quenfold::database
