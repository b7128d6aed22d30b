#include "logicalio/bit_packing.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstddef>
#include <limits>

#include "app/error.h"
#include "app/text.h"

namespace quenfold {
namespace {

constexpr char kReferenceType = '$';
constexpr char kNumberType = '#';

BitPackKind kindOfType(char type) {
  switch (type) {
    case kReferenceType:
      return BitPackKind::kReference;
    case kNumberType:
      return BitPackKind::kNumber;
    default:
      return BitPackKind::kUntyped;
  }
}

bool isField(const BitPackToken& token) {
  return token.kind == BitPackKind::kReference || token.kind == BitPackKind::kNumber;
}

void setShifts(std::vector<BitPackToken>& tokens) {
  std::uint32_t position = 0;
  for (auto token = tokens.rbegin(); token != tokens.rend(); ++token) {
    if (isField(*token)) {
      token->shift = position;
      token->mask = lowMask(token->bits);
      position += token->bits;
    }
  }
}

/// The field token between the braces, "name,width", appended when it is well-formed.
void appendField(std::vector<BitPackToken>& tokens, char type, std::string_view inside) {
  const std::size_t comma = inside.find(',');
  std::uint32_t bits = 0;
  if (comma != std::string_view::npos && parseUnsigned(inside.substr(comma + 1), bits, 10)) {
    tokens.push_back(makeFieldToken(type, inside.substr(0, comma), bits));
  }
}

}  // namespace

std::uint32_t lowMask(std::uint32_t bits) {
  return bits < 32 ? (std::uint32_t{1} << bits) - 1 : std::numeric_limits<std::uint32_t>::max();
}

BitPackToken makeFieldToken(char type, std::string_view name, std::uint32_t bits) {
  BitPackToken token;
  token.kind = kindOfType(type);
  if (token.kind == BitPackKind::kUntyped) {
    // Kept on purpose: the character is not named, its code tells where the message begins.
    constexpr std::string_view kMessage = "Invalid Bit Packing type char: ";
    const auto code = static_cast<unsigned char>(type);
    throw runtimeError("{}", kMessage.substr(std::min<std::size_t>(code, kMessage.size())));
  }
  token.text = name;
  token.bits = bits;
  return token;
}

BitPackToken makeLiteralToken(std::string_view text) {
  BitPackToken token;
  token.kind = BitPackKind::kLiteral;
  token.text = text;
  return token;
}

std::vector<BitPackToken> parseBitPacking(std::string_view text) {
  std::vector<BitPackToken> tokens;
  while (true) {
    const std::size_t type = text.find_first_of("$#");
    if (type == std::string_view::npos) {
      break;  // kept on purpose: text after the last field is dropped
    }
    if (type > 0) {
      tokens.push_back(makeLiteralToken(text.substr(0, type)));
    }
    const char typeChar = text[type];
    text.remove_prefix(type + 1);
    if (text.empty() || text.front() != '{') {
      continue;
    }
    const std::size_t close = text.find('}');
    if (close == std::string_view::npos) {
      break;
    }
    appendField(tokens, typeChar, text.substr(1, close - 1));
    text.remove_prefix(close + 1);
  }
  setShifts(tokens);
  return tokens;
}

std::string writeBitPacking(const std::vector<BitPackToken>& tokens) {
  std::string text;
  for (const BitPackToken& token : tokens) {
    if (token.kind == BitPackKind::kLiteral) {
      text += token.text;
    } else if (isField(token)) {
      const char type = token.kind == BitPackKind::kReference ? kReferenceType : kNumberType;
      text += fmt::format("{}{{{},{}}}", type, token.text, token.bits);
    }
  }
  return text;
}

}  // namespace quenfold
