// The input is a bit-packing string.

#include <cstdint>
#include <string>
#include <vector>

#include "logicalio/bit_packing.h"
#include "target.h"

namespace quenfold {
namespace {

std::vector<BitPackToken> fieldsOf(std::string_view text) {
  std::vector<BitPackToken> fields;
  for (BitPackToken& token : parseBitPacking(text)) {
    if (token.kind != BitPackKind::kLiteral) {
      fields.push_back(std::move(token));
    }
  }
  return fields;
}

/// The lowest field stands at 0, the others side by side above it.
void requirePlaces(const std::vector<BitPackToken>& fields) {
  std::uint32_t position = 0;
  for (auto field = fields.rbegin(); field != fields.rend(); ++field) {
    fuzz::require(field->shift == position, "fields lie side by side");
    fuzz::require(field->mask == lowMask(field->bits), "a mask is as wide as its field");
    position += field->bits;
  }
}

}  // namespace
}  // namespace quenfold

namespace quenfold::fuzz {
namespace {

void fuzzBitPacking(std::string_view input) {
  const std::vector<BitPackToken> fields = fieldsOf(input);
  requirePlaces(fields);
  const std::string written = writeBitPacking(parseBitPacking(input));
  requireEqual(writeBitPacking(fieldsOf(written)), writeBitPacking(fields),
               "fields are read as they were written");
}

const Target kBitPacking("bit_packing", fuzzBitPacking);

}  // namespace
}  // namespace quenfold::fuzz
