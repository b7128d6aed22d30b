#include <gtest/gtest.h>

#include <string>

#include "json/plain_run.h"
#include "matrices/port_entry.h"

namespace quenfold::packing {
namespace {

/// A text with the room behind it, read from its first character.
struct Entries {
  explicit Entries(const std::string& json) : text(json + std::string(kScanPadding, '\0')) {}
  std::optional<PortEntry> next() { return takeNextPortEntry(place); }
  [[nodiscard]] std::string rest() const { return place; }

  std::string text;
  char* place = text.data();
};

TEST(PortEntry, TakesOneAfterTheOther) {
  Entries entries(R"(},{"port":"p1","label":"l1"},{"port":"","label":""}],"id":1)");
  const auto first = entries.next();
  ASSERT_TRUE(first);
  EXPECT_EQ(first->port, "p1");
  EXPECT_EQ(first->label, "l1");
  EXPECT_EQ(entries.rest(), R"(},{"port":"","label":""}],"id":1)");
  const auto second = entries.next();
  ASSERT_TRUE(second);
  EXPECT_EQ(second->port, "");
  EXPECT_EQ(second->label, "");
  EXPECT_FALSE(entries.next());
  EXPECT_EQ(entries.rest(), R"(}],"id":1)");
}

TEST(PortEntry, PutsAZeroByteBehindEachText) {
  Entries entries(R"(},{"port":"device.slot.port.type","label":"some longer label"})");
  const auto entry = entries.next();
  ASSERT_TRUE(entry);
  EXPECT_STREQ(entry->port.data(), "device.slot.port.type");
  EXPECT_STREQ(entry->label.data(), "some longer label");
}

TEST(PortEntry, LeavesEveryOtherSpellingAsItIs) {
  for (const char* other : {"",
                            "}",
                            "},",
                            "},{",
                            "]",
                            R"(} ,{"port":"p","label":"l"})",
                            R"(}{"port":"p","label":"l"})",
                            R"(}, {"port":"p","label":"l"})",
                            R"(},{"port" :"p","label":"l"})",
                            R"(},{"Port":"p","label":"l"})",
                            R"(},{"label":"l","port":"p"})",
                            R"(},{"port":"p"})",
                            R"(},{"port":1,"label":"l"})",
                            R"(},{"port":"p","Label":"l"})",
                            R"(},{"port":"p","label":1})",
                            R"(},{"port":"p","label":"l)",
                            R"(},{"port":"p","label":"l")",
                            R"(},{"port":"p","label":"l" })",
                            R"(},{"port":"p","label":"l","x":1})",
                            R"(},{"port":"p\n","label":"l"})",
                            R"(},{"port":"p","label":"\u006c"})",
                            "},{\"port\":\"p\x1f\",\"label\":\"l\"}",
                            "},{\"port\":\"p\",\"label\":\"\tl\"}",
                            R"(},{"port":"p)",
                            R"(},{"port":")",
                            R"(},{"port":"p","label":")"}) {
    Entries entries(other);
    const std::string before = entries.text;
    EXPECT_FALSE(entries.next()) << other;
    EXPECT_EQ(entries.text, before) << other;
    EXPECT_EQ(entries.place, entries.text.data()) << other;
  }
}

}  // namespace
}  // namespace quenfold::packing
