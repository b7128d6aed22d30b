#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/files.h"
#include "database/commands.h"
#include "database/difference.h"
#include "database/folder.h"
#include "database/load_model.h"
#include "generator/random.h"
#include "properties/legacy_edits.h"
#include "properties/runs.h"
#include "support/scratch_path.h"

namespace quenfold::properties {
namespace {

namespace fs = std::filesystem;
using database::Report;

Report diff(const fs::path& from, const fs::path& to) {
  return database::diff({from, to, true, true});
}

std::vector<ToldDifference> toldIn(const Report& report) {
  std::vector<ToldDifference> told;
  const PlainJson root = parsePlainJson(report.text);
  for (const PlainJson& difference : root.find("differences")->elements) {
    const auto text = [&](const char* member) {
      const PlainJson* const value = difference.find(member);
      return value->isText() ? value->text : std::string();
    };
    told.push_back({text("kind"), text("file"), text("place"), text("from"), text("to")});
  }
  return told;
}

LegacyFiles readLegacy(const fs::path& folder) {
  LegacyFiles database{{}, readMeaning(folder)};
  for (const auto& file : fs::directory_iterator(folder)) {
    database.files.emplace(file.path().filename(), readPlainJson(file.path()));
  }
  return database;
}

std::string printed(const ToldDifference& difference) {
  return fmt::format("{} {}: {}: {} -> {}", difference.kind, difference.file, difference.place,
                     difference.from, difference.to);
}

std::string printed(const std::vector<ToldDifference>& differences) {
  std::string text;
  for (const ToldDifference& difference : differences) {
    text += printed(difference) + "\n";
  }
  return text;
}

std::vector<LegacyEdit> legacyEdits() {
  std::vector<LegacyEdit> edits = matrixEdits();
  const std::vector<LegacyEdit> ofRecords = recordEdits();
  edits.insert(edits.end(), ofRecords.begin(), ofRecords.end());
  return edits;
}

/// Whether packing stops before it has read everything: there is nothing to compare then.
bool isReadWhole(const fs::path& legacy) {
  return database::packInMemory(database::readLegacyDatabase(legacy)).stops.empty();
}

class Differences : public testing::Test {
 protected:
  void tryDatabase(std::uint32_t seed) {
    const test::ScratchPath scratch;
    const Hush hush;
    legacy_ = scratch.path() / "legacy";
    edited_ = scratch.path() / "edited";
    packed_ = scratch.path() / "packed";
    fs::create_directories(legacy_);
    writeLegacy(legacy_, seed);
    where_ = fmt::format("seed {}", seed);
    if (!isReadWhole(legacy_)) {
      return;
    }
    ++compared_;
    packWithQuenfold(legacy_, packed_);
    requireNone(diff(legacy_, legacy_), "itself");
    requireNone(diff(packed_, packed_), "itself, packed");
    requireNone(diff(legacy_, packed_), "its packed form");
    if (!database::check({legacy_, false, false, false}).found) {
      ++clean_;
      requireSameAfterPacking();
      tryEdits(seed);
    }
  }

  void requireAllEdits() const {
    std::cout << compared_ << " databases compared, " << clean_ << " of them clean\n";
    for (const LegacyEdit& edit : legacyEdits()) {
      const auto made = edits_.find(edit.what);
      const std::uint32_t count = made == edits_.end() ? 0 : made->second;
      std::cout << edit.what << ": " << count << '\n';
      EXPECT_GT(count, 0U) << edit.what;
    }
  }

 private:
  void requireNone(const Report& report, const char* what) const {
    EXPECT_FALSE(report.found) << where_ << " and " << what << ":\n" << printed(toldIn(report));
    EXPECT_TRUE(toldIn(report).empty()) << where_ << " and " << what;
  }

  /// What the files say, and what those say that unpacking gives.
  void requireSameAfterPacking() const {
    const database::Model before = modelOf(database::readLegacyDatabase(legacy_));
    const database::Model after =
        modelOf(database::loadPackedDatabase(database::readPackedFiles(packed_), packed_));
    EXPECT_TRUE(isEmpty(compare(before, after))) << where_;
    const fs::path returned = edited_ / "returned";
    fs::create_directories(returned);
    unpackWithQuenfold(packed_, returned);
    requireNone(diff(legacy_, returned), "what comes back");
  }

  void tryEdits(std::uint32_t seed) {
    generator::Random random = generator::seededRandom(seed);
    const LegacyFiles database = readLegacy(legacy_);
    for (const LegacyEdit& edit : legacyEdits()) {
      LegacyFiles files = database;
      const std::vector<ToldDifference> expected = edit.make(files, random);
      if (!expected.empty()) {
        ++edits_[edit.what];
        requireTold(edit, expected, files);
      }
    }
  }

  void requireTold(const LegacyEdit& edit, const std::vector<ToldDifference>& expected,
                   const LegacyFiles& files) const {
    fs::remove_all(edited_);
    fs::create_directories(edited_);
    for (const auto& [name, file] : files.files) {
      writeBytes(edited_ / name, jsonOf(file));
    }
    const std::vector<ToldDifference> told = toldIn(diff(legacy_, edited_));
    for (const ToldDifference& one : expected) {
      EXPECT_NE(std::find(told.begin(), told.end(), one), told.end())
          << where_ << ", " << edit.what << ": not told: " << printed(one) << ", but:\n"
          << printed(told);
    }
    EXPECT_TRUE(!edit.alone || told.size() == expected.size())
        << where_ << ", " << edit.what << ": told:\n"
        << printed(told);
  }

  fs::path legacy_;
  fs::path edited_;
  fs::path packed_;
  std::string where_;
  std::uint32_t compared_ = 0;
  std::uint32_t clean_ = 0;
  std::map<std::string_view, std::uint32_t> edits_;
};

TEST_F(Differences, AreNoneUntilSomethingIsEdited) {
  const Seeds seeds = seedsToTry(120);
  for (std::uint32_t seed = seeds.first; seed < seeds.first + seeds.count; ++seed) {
    tryDatabase(seed);
  }
  if (seeds.enough) {
    requireAllEdits();
  }
}

}  // namespace
}  // namespace quenfold::properties
