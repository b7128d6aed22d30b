#include <gtest/gtest.h>

#include "logicalio/fingerprints.h"

namespace quenfold {
namespace {

LogicalIORecord recordOf(const char* name, std::int32_t id) {
  LogicalIORecord record;
  record.name = name;
  record.id = id;
  return record;
}

TEST(HashLogicalIO, FieldsWithoutAnyValueAre0) {
  EXPECT_EQ(hashLogicalIO({}), (FingerprintValues{{"category", 0},
                                                  {"description", 0},
                                                  {"id", 0},
                                                  {"name", 0},
                                                  {"redirect", 0},
                                                  {"tally", 0}}));
}

TEST(HashLogicalIO, WalksTheRecordsOnceInOrder) {
  LogicalIORecord first = recordOf("Cam 1", 7);
  first.tally = "T1";
  first.categories = {{false, 5, {}}, {true, 0, "Show"}};
  LogicalIORecord second = recordOf("\xc3\xa9", -1);
  second.redirect = 4;
  second.description = "left";
  EXPECT_EQ(hashLogicalIO({first, second}), (FingerprintValues{{"category", 1740965305U},
                                                               {"description", 2158103027U},
                                                               {"id", 2525627808U},
                                                               {"name", 1563114135U},
                                                               {"redirect", 4055879026U},
                                                               {"tally", 3023430481U}}));
}

TEST(HashLogicalIO, TheDefaultRedirectCounts) {
  EXPECT_EQ(hashLogicalIO({recordOf("", 1)}), (FingerprintValues{{"category", 0},
                                                                 {"description", 0},
                                                                 {"id", 453165582U},
                                                                 {"name", 0},
                                                                 {"redirect", 453165582U},
                                                                 {"tally", 0}}));
}

TEST(Fingerprints, AskingForAValueCreatesNothing) {
  Fingerprints fingerprints;
  EXPECT_EQ(fingerprintValue(fingerprints, "name"), 0U);
  EXPECT_TRUE(fingerprints.empty());
  fingerprintOf(fingerprints, "name").hashAdd("A");
  fingerprintOf(fingerprints, "name").hashAdd("");
  EXPECT_EQ(fingerprintValue(fingerprints, "name"), 4215536289U);
  EXPECT_EQ(valuesOf(fingerprints), (FingerprintValues{{"name", 4215536289U}}));
}

TEST(HashText, WritesUnsignedNumbersInKeyOrder) {
  EXPECT_EQ(hashText("T", {{"b", 4215536289U}, {"a", 0}, {"", 4294967295U}}),
            "{\n\t\"T\":\t{\n\t\t\"hash\":\t{\n"
            "\t\t\t\"\":\t4294967295,\n\t\t\t\"a\":\t0,\n\t\t\t\"b\":\t4215536289\n"
            "\t\t}\n\t}\n}");
  EXPECT_EQ(hashText("T", {}), "{\n\t\"T\":\t{\n\t\t\"hash\":\t{\n\t\t}\n\t}\n}");
}

}  // namespace
}  // namespace quenfold
