#pragma once

#include <string>
#include <utility>

namespace quenfold {

/// Rebuilds a legacy logical IO document from the packed files `stem` + "Ports.json",
/// "Labels.json" and "LegacyCategories.json" and the label files, all in `directory`. Returns the
/// legacy text and the fingerprint text; writes no file. Throws a runtime error on bad input.
std::pair<std::string, std::string> convertPackedToVelmora(const std::string& stem,
                                                           const std::string& directory);

}  // namespace quenfold
