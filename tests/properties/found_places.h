#pragma once

#include <string>
#include <string_view>

#include "database/findings.h"

namespace quenfold::properties {

/// The complete findings of a check, asked for what they name.
class FoundPlaces {
 public:
  explicit FoundPlaces(const database::Findings& findings) : findings_(findings) {}

  /// Whether a finding of that kind in that file has this very place.
  [[nodiscard]] bool has(database::Kind kind, std::string_view file,
                         const std::string& place) const;

  /// Whether one's place begins so.
  [[nodiscard]] bool begins(database::Kind kind, std::string_view file,
                            const std::string& start) const;

  /// Whether one's place begins so and holds the other text further on.
  [[nodiscard]] bool beginsAndHas(database::Kind kind, std::string_view file,
                                  const std::string& start, const std::string& text) const;

  /// Whether one's place ends so.
  [[nodiscard]] bool ends(database::Kind kind, std::string_view file, const std::string& end) const;

  /// Whether there is any of that kind in that file.
  [[nodiscard]] bool any(database::Kind kind, std::string_view file) const;

 private:
  template <typename Test>
  bool find(database::Kind kind, std::string_view file, Test test) const;

  const database::Findings& findings_;
};

}  // namespace quenfold::properties
