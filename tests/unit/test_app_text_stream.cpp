#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/text_stream.h"
#include "support/texts.h"

namespace quenfold {
namespace {

using Chunks = std::vector<std::string>;

/// Keeps the chunks apart.
class ChunkStream final : public TextStream {
 public:
  [[nodiscard]] const Chunks& chunks() const { return chunks_; }

 private:
  void handOn(std::string_view chunk) override { chunks_.emplace_back(chunk); }

  Chunks chunks_;
};

TEST(TextStream, HandsOnPiecesInOrder) {
  ChunkStream out;
  out.append("ab");
  out.append("");
  out.append("c");
  EXPECT_TRUE(out.chunks().empty());
  out.flush();
  out.flush();
  EXPECT_EQ(out.chunks(), Chunks{"abc"});
  EXPECT_EQ(out.size(), 3U);
}

TEST(TextStream, KeepsUpToAChunk) {
  const std::string chunk(65536, 'x');
  ChunkStream out;
  out.append(chunk);
  EXPECT_TRUE(out.chunks().empty());
  out.append("y");
  EXPECT_EQ(out.chunks(), Chunks{chunk});
  out.append(chunk.substr(1));
  EXPECT_EQ(out.chunks().size(), 1U) << "it fits what is left";
  out.append(chunk + "z");
  EXPECT_EQ(out.chunks(), (Chunks{chunk, 'y' + chunk.substr(1), chunk + "z"}));
}

TEST(TextStream, LosesNothingWherePiecesMeetTheEndOfAChunk) {
  for (const std::size_t length : {1U, 7U, 65535U, 65536U, 65537U, 200000U}) {
    std::string expected;
    test::StringStream out;
    while (expected.size() < 400000) {
      const std::string piece(length, static_cast<char>('a' + expected.size() % 26));
      expected += piece + '.';
      out.append(piece);
      out.append(".");
    }
    out.flush();
    EXPECT_EQ(out.text(), expected) << length;
    EXPECT_EQ(out.size(), expected.size());
  }
}

}  // namespace
}  // namespace quenfold
