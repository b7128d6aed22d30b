#include <gtest/gtest.h>

#include <ostream>

#include "app/files.h"
#include "matrices/pack.h"
#include "matrices/unpack.h"
#include "support/plants.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

/// The matrices after packing and unpacking them once. Warnings of a messy database are expected.
std::string thereAndBack(const std::string& matrices) {
  const test::ScratchFolder packed;
  std::uint32_t bytes = 0;
  test::standardErrorOf([&] {
    convertMatricesToPacked("matrices.json", matrices, packed.path());
    bytes = convertPackedMatrices(packed.path(), {"matrices.json"}, packed.path("out"));
  });
  std::string text = packed.bytesOf("out/matrices.json");
  EXPECT_EQ(bytes, text.size());
  return text;
}

struct Database {
  std::uint32_t ports;
  std::uint32_t seed;
};

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest looks for this name
void PrintTo(const Database& database, std::ostream* out) {
  *out << database.ports << " ports, seed " << database.seed;
}

std::vector<Database> databases() {
  std::vector<Database> all;
  for (const std::uint32_t ports : {10U, 37U, 100U, 1000U, 20000U}) {
    for (std::uint32_t seed = 1; seed <= (ports < 20000U ? 8U : 2U); ++seed) {
      all.push_back({ports, seed});
    }
  }
  return all;
}

class MatricesRoundTrip : public testing::TestWithParam<Database> {};

TEST_P(MatricesRoundTrip, GivesACanonicalDatabaseBackByteForByte) {
  const std::string matrices =
      matricesTextOf(generator::plantOf(GetParam().ports, GetParam().seed));
  EXPECT_TRUE(thereAndBack(matrices) == matrices);
}

/// Filled gaps can change the layouts that the next round compares, so it takes a few.
TEST_P(MatricesRoundTrip, BringsAMessyDatabaseToAFixedPoint) {
  constexpr int kRounds = 12;
  std::string matrices =
      matricesTextOf(generator::plantOf(GetParam().ports, GetParam().seed, true));
  int rounds = 0;
  for (std::string next = thereAndBack(matrices); next != matrices; next = thereAndBack(matrices)) {
    ASSERT_LT(++rounds, kRounds);
    matrices = std::move(next);
  }
  EXPECT_GT(rounds, 0) << "a messy database does not come back as it was";
}

INSTANTIATE_TEST_SUITE_P(Generated, MatricesRoundTrip, testing::ValuesIn(databases()));

TEST(MatricesRoundTrip, GivesOneCrowdedSlotBackByteForByte) {
  generator::Random random = generator::seededRandom(5);
  const std::string matrices = matricesTextOf(generator::buildPlant({100000, 1, 1}, random));
  EXPECT_TRUE(thereAndBack(matrices) == matrices);
}

TEST(MatricesRoundTrip, GivesTheExampleBackByteForByte) {
  const std::string matrices = readFile(joinPath(QUENFOLD_EXAMPLES, "matrices.json"));
  EXPECT_EQ(thereAndBack(matrices), matrices);
}

}  // namespace
}  // namespace quenfold
