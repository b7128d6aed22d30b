#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "database/check.h"
#include "properties/compared.h"
#include "properties/details.h"
#include "properties/found_places.h"
#include "properties/meaning.h"
#include "properties/runs.h"
#include "support/scratch_path.h"

namespace quenfold::properties {
namespace {

using database::Findings;
using database::Kind;
using database::LegacyDatabase;

/// What one seed led to.
struct Outcome {
  std::optional<bool> clean;  // whether the check finds nothing but notes; none if it fails
  std::string failure;        // of the check
  std::string roundTripFailure;
  std::vector<Difference> differences;
  std::vector<Difference> details;
  std::vector<Kind> kinds;  // of the findings
};

std::vector<Kind> kindsOf(const Findings& findings) {
  std::vector<Kind> kinds;
  for (std::size_t kind = 0; kind < database::kKinds.size(); ++kind) {
    if (!findings.of(static_cast<Kind>(kind)).empty()) {
      kinds.push_back(static_cast<Kind>(kind));
    }
  }
  return kinds;
}

Outcome tryDatabase(std::uint32_t seed) {
  const test::ScratchPath scratch;
  const Hush hush;
  RoundTrip trip{
      scratch.path() / "legacy", scratch.path() / "packed", scratch.path() / "back", {}, {}};
  std::filesystem::create_directories(trip.legacy);
  writeLegacy(trip.legacy, seed);
  Outcome outcome;
  std::optional<Findings> findings;
  try {
    const LegacyDatabase database = database::readLegacyDatabase(trip.legacy);
    findings = database::checkLegacy(database, database::packInMemory(database), true);
    outcome.clean = !anyCounts(*findings, false);
    outcome.kinds = kindsOf(*findings);
  } catch (const std::exception& failure) {
    outcome.failure = failure.what();
  }
  try {
    packWithQuenfold(trip.legacy, trip.packed);
    unpackWithQuenfold(trip.packed, trip.returned);
  } catch (const std::exception& failure) {
    outcome.roundTripFailure = failure.what();
    return outcome;
  }
  if (findings) {
    trip.before = readMeaning(trip.legacy);
    trip.after = readMeaning(trip.returned);
    outcome.differences = differences(trip.before, trip.after, FoundPlaces(*findings));
    outcome.details = detailDifferences(trip, FoundPlaces(*findings));
  }
  return outcome;
}

/// How many of the databases there were.
struct Tally {
  std::uint32_t clean = 0;
  std::uint32_t found = 0;
  std::uint32_t failed = 0;
  std::size_t differences = 0;
  std::size_t details = 0;
  std::map<Kind, std::uint32_t> byKind;
};

void requireProperties(std::uint32_t seed, Tally& tally) {
  const Outcome outcome = tryDatabase(seed);
  EXPECT_EQ(outcome.failure.empty(), outcome.roundTripFailure.empty())
      << "seed " << seed << ": " << outcome.failure << " / " << outcome.roundTripFailure;
  if (!outcome.clean) {
    ++tally.failed;
    return;
  }
  ++(*outcome.clean ? tally.clean : tally.found);
  tally.differences += outcome.differences.size();
  tally.details += outcome.details.size();
  for (const Kind kind : outcome.kinds) {
    ++tally.byKind[kind];
  }
  EXPECT_FALSE(*outcome.clean && !outcome.differences.empty())
      << "seed " << seed << ": nothing found, but " << outcome.differences.front().what;
  for (const auto* const differences : {&outcome.differences, &outcome.details}) {
    for (const Difference& difference : *differences) {
      EXPECT_TRUE(difference.named) << "seed " << seed << ": no finding names: " << difference.what;
    }
  }
}

/// Those of a legacy database.
void requireAllKinds(const Tally& tally) {
  for (std::size_t place = 0; place < database::kKinds.size(); ++place) {
    const auto kind = static_cast<Kind>(place);
    if (kind >= Kind::kFileMissing && kind < Kind::kDetailsLost) {
      continue;
    }
    const auto met = tally.byKind.find(kind);
    const std::uint32_t count = met == tally.byKind.end() ? 0 : met->second;
    std::cout << textOf(kind).name << ": " << count << '\n';
    EXPECT_GT(count, 0U) << textOf(kind).name;
  }
}

TEST(RoundTrips, WhatDiffersIsNamedAndWhatIsNotFoundIsTheSame) {
  const Seeds seeds = seedsToTry(150);
  Tally tally;
  for (std::uint32_t seed = seeds.first; seed < seeds.first + seeds.count; ++seed) {
    requireProperties(seed, tally);
  }
  std::cout << seeds.count << " databases: " << tally.clean << " with nothing but notes, "
            << tally.found << " with findings, " << tally.failed << " that neither does; "
            << tally.differences << " differences and " << tally.details << " of details\n";
  if (seeds.enough) {
    requireAllKinds(tally);
    EXPECT_GT(tally.clean, seeds.count / 20);
    EXPECT_GT(tally.found, seeds.count / 20);
  }
}

}  // namespace
}  // namespace quenfold::properties
