#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/text_stream.h"

namespace quenfold {
namespace {

using Chunks = std::vector<std::string>;

TEST(TextStream, HandsOnPiecesInOrder) {
  Chunks chunks;
  TextStream out([&](std::string_view chunk) { chunks.emplace_back(chunk); });
  out.append("ab");
  out.append("");
  out.append("c");
  EXPECT_TRUE(chunks.empty());
  out.flush();
  out.flush();
  EXPECT_EQ(chunks, Chunks{"abc"});
  EXPECT_EQ(out.size(), 3U);
}

TEST(TextStream, LosesNothingWherePiecesMeetTheEndOfAChunk) {
  for (const std::size_t length : {1U, 7U, 65535U, 65536U, 65537U, 200000U}) {
    std::string text;
    std::string expected;
    TextStream out([&](std::string_view chunk) { text += chunk; });
    while (expected.size() < 400000) {
      const std::string piece(length, static_cast<char>('a' + expected.size() % 26));
      expected += piece + '.';
      out.append(piece);
      out.append(".");
    }
    out.flush();
    EXPECT_EQ(text, expected) << length;
    EXPECT_EQ(out.size(), expected.size());
  }
}

}  // namespace
}  // namespace quenfold
