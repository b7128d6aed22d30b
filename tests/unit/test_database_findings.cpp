#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "database/findings.h"
#include "support/scratch.h"

namespace quenfold::database {
namespace {

using Names = std::vector<std::string_view>;

Findings findingsOf(const std::vector<Kind>& kinds) {
  Findings findings(false);
  for (const Kind kind : kinds) {
    findings.add(kind, "a.json", [] { return std::string("a"); });
    findings.add(kind, "b.json", [] { return std::string("b"); });
  }
  return findings;
}

TEST(Kinds, AreFoundByTheirNames) {
  for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
    EXPECT_EQ(kindOf(kKinds.at(kind).name), static_cast<Kind>(kind));
  }
  EXPECT_EQ(test::messageOf([] { kindOf("port-addded"); }), "unknown kind: port-addded");
  EXPECT_EQ(test::messageOf([] { kindOf(""); }), "unknown kind: ");
}

TEST(AnyCounts, TakesNotesWhereTheyCount) {
  EXPECT_FALSE(anyCounts(findingsOf({}), true));
  EXPECT_FALSE(anyCounts(findingsOf({Kind::kKeyChanged}), false));
  EXPECT_TRUE(anyCounts(findingsOf({Kind::kKeyChanged}), true));
  EXPECT_TRUE(anyCounts(findingsOf({Kind::kPortLost}), false));
}

TEST(RefusingKinds, AreEachToldOnceUnlessTheyAreNotesOrAccepted) {
  const Findings findings = findingsOf({Kind::kPortLost, Kind::kKeyChanged, Kind::kPortAdded});
  EXPECT_EQ(refusingKinds(findings, {}), (Names{"port-added", "port-lost"}));
  EXPECT_EQ(refusingKinds(findings, {Kind::kPortAdded}), Names{"port-lost"});
  EXPECT_EQ(refusingKinds(findings, {Kind::kPortLost, Kind::kPortAdded}), Names{});
}

TEST(FindingsText, SaysThatThereAreNone) {
  EXPECT_EQ(findingsText(Findings(false)), "Nothing found.\n");
}

}  // namespace
}  // namespace quenfold::database
