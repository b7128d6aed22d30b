#include <fmt/core.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "database/check.h"
#include "generator/random.h"
#include "properties/found_places.h"
#include "properties/meaning.h"
#include "properties/packed_edits.h"
#include "properties/runs.h"
#include "support/scratch_path.h"

namespace quenfold::properties {
namespace {

using database::FileTexts;
using database::Findings;
using database::Kind;
using database::LegacyDatabase;

std::vector<PackedEdit> packedEdits() {
  std::vector<PackedEdit> edits = setEdits();
  const std::vector<PackedEdit> ofTables = tableEdits();
  edits.insert(edits.end(), ofTables.begin(), ofTables.end());
  return edits;
}

Findings checkTexts(const FileTexts& texts) {
  return database::checkPacked(texts, database::loadPackedDatabase(texts, {}), true);
}

struct PackedSet {
  FileTexts texts;
  std::set<std::string> strangers;  // devices that the packed files may not know
};

std::string deviceOf(const std::string& name) { return name.substr(0, name.find('.')); }

/// The devices of ports of records that no matrix lists.
std::set<std::string> danglingIn(const Meaning& meaning) {
  std::set<std::string> devices;
  for (const auto& [file, records] : meaning.tables) {
    for (const MeantRecord& record : records) {
      for (const std::string& port : record.ports) {
        if (meaning.portsNamed.count(port) == 0) {
          devices.insert(deviceOf(port));
        }
      }
    }
  }
  return devices;
}

std::set<std::string> strangersIn(const Meaning& meaning) {
  std::set<std::string> strangers = danglingIn(meaning);
  for (const MeantMatrix& matrix : meaning.matrices) {
    if (matrix.serial.empty()) {
      strangers.insert(deviceOf(matrix.name));
    }
  }
  return strangers;
}

/// A legacy database in which the check finds nothing but notes, as it is packed; nothing for
/// others.
std::optional<PackedSet> packCleanOne(std::uint32_t seed) {
  const test::ScratchPath scratch;
  const Hush hush;
  const std::string legacy = scratch.path() / "legacy";
  const std::string packed = scratch.path() / "packed";
  std::filesystem::create_directories(legacy);
  writeLegacy(legacy, seed);
  const LegacyDatabase database = database::readLegacyDatabase(legacy);
  const Findings findings =
      database::checkLegacy(database, database::packInMemory(database), false);
  if (anyCounts(findings, false)) {
    return std::nullopt;
  }
  packWithQuenfold(legacy, packed);
  return PackedSet{database::readPackedFiles(packed), strangersIn(readMeaning(legacy))};
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

/// A device is all right before packing and unknown after it when it has no serial number, when
/// only a record's port names it, and when its serial number is a name that packing needs for
/// another.
void requireClean(const PackedSet& set, std::uint32_t seed) {
  const Findings findings = checkTexts(set.texts);
  EXPECT_TRUE(refusingKinds(findings, {Kind::kDeviceUnknown}).empty())
      << "seed " << seed << ": " << findingsText(findings);
  for (const auto& [file, group] : findings.of(Kind::kDeviceUnknown)) {
    for (const std::string& device : group.places) {
      EXPECT_EQ(set.strangers.count(device), 1U) << "seed " << seed << ": " << device;
    }
  }
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
  const Seeds seeds = seedsToTry(300);
  PackedFiles others;
  std::uint32_t clean = 0;
  for (std::uint32_t seed = seeds.first; seed < seeds.first + seeds.count; ++seed) {
    const std::optional<PackedSet> set = packCleanOne(seed);
    if (set) {
      ++clean;
      requireClean(*set, seed);
      tryEdits(set->texts, others, seed);
      others = parsed(set->texts);
    }
  }
  std::cout << clean << " packed sets of " << seeds.count << " databases\n";
  if (seeds.enough) {
    requireAllEdits();
  }
}

}  // namespace
}  // namespace quenfold::properties
