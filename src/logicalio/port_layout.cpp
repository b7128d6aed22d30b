#include "logicalio/port_layout.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "logicalio/bit_packing.h"

namespace quenfold {
namespace {

/// One part of the layout string: a literal (type 0) or a field.
struct LayoutPart {
  char type;
  const char* literal;
  PortField field;
};

constexpr std::array<LayoutPart, 12> kLayout = {{{'$', nullptr, kDevice},
                                                 {0, ".", {}},
                                                 {'$', nullptr, kSlot},
                                                 {0, ".", {}},
                                                 {'$', nullptr, kPortPrefix},
                                                 {0, "[", {}},
                                                 {'#', nullptr, kPortId},
                                                 {0, "]", {}},
                                                 {0, ".", {}},
                                                 {'$', nullptr, kType},
                                                 {0, ".ch", {}},
                                                 {'#', nullptr, kCh}}};

}  // namespace

std::string layoutString(const FieldWidths& widths) {
  std::vector<BitPackToken> tokens;
  tokens.reserve(kLayout.size());
  for (const LayoutPart& part : kLayout) {
    tokens.push_back(part.type == 0
                         ? makeLiteralToken(part.literal)
                         : makeFieldToken(part.type, kPortFieldNames.at(part.field),
                                          static_cast<std::uint32_t>(widths.at(part.field))));
  }
  return writeBitPacking(tokens);
}

bool readLayout(std::string_view layout, FieldWidths& widths) {
  const std::vector<BitPackToken> tokens = parseBitPacking(layout);
  for (const BitPackToken& token : tokens) {
    const auto* const name = std::find(kPortFieldNames.begin(), kPortFieldNames.end(), token.text);
    if (token.kind != BitPackKind::kLiteral && name != kPortFieldNames.end()) {
      widths.at(static_cast<std::size_t>(name - kPortFieldNames.begin())) =
          static_cast<std::int32_t>(token.bits);
    }
  }
  return !tokens.empty();
}

}  // namespace quenfold
