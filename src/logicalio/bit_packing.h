#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quenfold {

/// The kinds of token in a bit-packing string such as "${device,3}.ch#{ch,2}".
enum class BitPackKind : std::uint32_t {
  kLiteral = 0,    // any text outside the fields
  kReference = 1,  // "${name,width}": the id of a name
  kNumber = 2,     // "#{name,width}": the number itself
  kUntyped = 3,    // not typed yet; written as nothing
};

struct BitPackToken {
  BitPackKind kind = BitPackKind::kUntyped;
  std::string text;        // the literal, or the field's name
  std::uint32_t bits = 0;  // width; 0 for a literal
  // For other programs: a port dictionary lays its fields out itself, in their own order.
  std::uint32_t mask = 0;   // 2^bits - 1, not shifted; all ones from 32 bits on
  std::uint32_t shift = 0;  // position of the lowest bit
};

/// A reference field for '$', a number field for '#', its mask and shift not yet set. Throws a
/// runtime error for any other type character.
BitPackToken makeFieldToken(char type, std::string_view name, std::uint32_t bits);

BitPackToken makeLiteralToken(std::string_view text);

/// The tokens in text order; the last field is the lowest. Malformed fields and everything after
/// the last field are left out.
std::vector<BitPackToken> parseBitPacking(std::string_view text);

std::string writeBitPacking(const std::vector<BitPackToken>& tokens);

/// 2^bits - 1, all ones from 32 bits on.
std::uint32_t lowMask(std::uint32_t bits);

}  // namespace quenfold
