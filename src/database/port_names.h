#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "app/key_hash.h"
#include "database/check_tables.h"

namespace quenfold::database {

/// What the texts in a table's lists of ports stand for. Refers to the table and the context.
class PortNames {
 public:
  PortNames(const LegacyTable& legacy, const TableContext& context);

  /// The port key that packing takes the text for, printed as unpacking prints it; nothing for a
  /// text that is none.
  [[nodiscard]] std::optional<std::string> keyOf(std::string_view text) const;

  /// What unpacking calls the port of that key: its label or the key itself.
  [[nodiscard]] std::string_view shownName(std::string_view key) const;

  /// All ports that a text names, as their label or key, each once in the order of their bytes.
  struct Bearers {
    std::vector<std::string_view> listed;    // in the legacy matrices
    std::vector<std::string_view> returned;  // in what unpacking makes of them
  };

  /// Only for texts of the table and what unpacking makes of them.
  [[nodiscard]] const Bearers& bearersOf(std::string_view text) const;

  /// Whether a matrix lists the port.
  [[nodiscard]] bool isListed(std::string_view key) const {
    return context_.ports.find(key) != nullptr;
  }

 private:
  void noteText(std::string_view text);
  void noteTexts(const LegacyTable& legacy);
  void noteListed();
  void noteReturned();

  const TableContext& context_;
  std::unordered_map<std::string_view, Bearers, TextHash> bearers_;
};

}  // namespace quenfold::database
