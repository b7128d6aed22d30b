#include <gtest/gtest.h>

#include "json/escape.h"
#include "support/cjson_trees.h"

namespace quenfold {
namespace {

std::string escapedAsCJson(std::string_view text) {
  std::string out;
  appendEscaped(out, text, kCJsonDigits);
  return out;
}

TEST(AppendEscaped, SpellsEveryByteAsCJsonDoes) {
  for (int byte = 1; byte < 256; ++byte) {
    const std::string text = {'x', static_cast<char>(byte), 'y'};
    EXPECT_EQ('"' + escapedAsCJson(text) + '"', test::printCJson(*test::cjsonString(text))) << byte;
  }
}

}  // namespace
}  // namespace quenfold
