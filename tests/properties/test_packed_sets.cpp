#include <fmt/core.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "database/check.h"
#include "generator/random.h"
#include "properties/found_places.h"
#include "properties/packed_edits.h"
#include "properties/runs.h"
#include "support/scratch_path.h"

namespace quenfold::properties {
namespace {

using database::FileTexts;
using database::Findings;
using database::Kind;
using database::LegacyDatabase;

Findings checkTexts(const FileTexts& texts) {
  return database::checkPacked(texts, database::loadPackedDatabase(texts, {}), true);
}

/// A legacy database in which the check finds nothing but notes, as it is packed; empty for others.
FileTexts packCleanOne(std::uint32_t seed) {
  const test::ScratchPath scratch;
  const Hush hush;
  const std::string legacy = scratch.path() / "legacy";
  const std::string packed = scratch.path() / "packed";
  std::filesystem::create_directories(legacy);
  writeLegacy(legacy, seed);
  const LegacyDatabase database = database::readLegacyDatabase(legacy);
  const Findings findings =
      database::checkLegacy(database, database::packInMemory(database), false);
  if (anyCounts(findings, false, {})) {
    return {};
  }
  packWithQuenfold(legacy, packed);
  return database::readPackedFiles(packed);
}

PackedFiles parsed(const FileTexts& texts) {
  PackedFiles files;
  for (const auto& [name, text] : texts) {
    files.emplace(name, parsePlainJson(text));
  }
  return files;
}

FileTexts textsOf(const PackedFiles& files) {
  FileTexts texts;
  for (const auto& [name, file] : files) {
    texts.emplace(name, jsonOf(file));
  }
  return texts;
}

/// A record's port on a device that nothing else knows, which is but a note before packing, is
/// named by its device after it.
void requireClean(const FileTexts& texts, std::uint32_t seed) {
  const Findings findings = checkTexts(texts);
  EXPECT_FALSE(anyCounts(findings, true, {Kind::kDeviceUnknown}))
      << "seed " << seed << ": " << findingsText(findings);
  const auto& devices = findings.of(Kind::kDeviceUnknown);
  EXPECT_EQ(devices.find("dbpack_matrices.json"), devices.end()) << "seed " << seed;
}

class PackedSets : public testing::Test {
 protected:
  void tryEdits(const FileTexts& texts, const PackedFiles& others, std::uint32_t seed) {
    generator::Random random = generator::seededRandom(seed);
    for (const PackedEdit& edit : packedEdits()) {
      PackedFiles files = parsed(texts);
      const std::vector<Expected> expected = edit.make(files, others, random);
      if (!expected.empty()) {
        ++edits_[edit.what];
        requireFindings(expected, files, fmt::format("seed {}, {}", seed, edit.what));
      }
    }
  }

  /// Each edit that there is must have been tried.
  void requireAllEdits() const {
    for (const PackedEdit& edit : packedEdits()) {
      const auto made = edits_.find(edit.what);
      const std::uint32_t count = made == edits_.end() ? 0 : made->second;
      std::cout << edit.what << ": " << count << '\n';
      EXPECT_GT(count, 0U) << edit.what;
    }
  }

 private:
  static void requireFindings(const std::vector<Expected>& expected, const PackedFiles& files,
                              const std::string& where) {
    const Findings findings = checkTexts(textsOf(files));
    for (const Expected& one : expected) {
      EXPECT_TRUE(FoundPlaces(findings).begins(one.kind, one.file, one.placeStart))
          << where << ": no " << textOf(one.kind).name << " in " << one.file << " at "
          << one.placeStart << " among\n"
          << findingsText(findings);
    }
  }

  std::map<std::string_view, std::uint32_t> edits_;
};

TEST_F(PackedSets, AreCleanUntilTheyAreEdited) {
  const Seeds seeds = seedsToTry(600);
  PackedFiles others;
  std::uint32_t clean = 0;
  for (std::uint32_t seed = seeds.first; seed < seeds.first + seeds.count; ++seed) {
    const FileTexts texts = packCleanOne(seed);
    if (texts.empty()) {
      continue;
    }
    ++clean;
    requireClean(texts, seed);
    tryEdits(texts, others, seed);
    others = parsed(texts);
  }
  std::cout << clean << " packed sets of " << seeds.count << " databases\n";
  requireAllEdits();
}

}  // namespace
}  // namespace quenfold::properties
