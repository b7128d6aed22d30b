#include <gtest/gtest.h>

#include <type_traits>

#include "json/cjson_tree.h"
#include "logicalio/ref_map.h"
#include "support/written_json.h"

namespace VelDB {
namespace {

/// The map's pairs in the order of the ids, on one line.
std::string textOf(const RefMap& map) {
  testing::internal::CaptureStdout();
  map.dump("; ");
  std::string text = testing::internal::GetCapturedStdout();
  EXPECT_EQ(text.back(), '\n');
  text.pop_back();
  return text;
}

RefMap mapOf(std::initializer_list<const char*> names) {
  RefMap map;
  for (const char* name : names) {
    map.add(name);
  }
  return map;
}

RefMap loaded(const char* json) {
  RefMap map;
  map.fromJson(*quenfold::parseCJson(json));
  return map;
}

TEST(RefMap, AddGivesConsecutiveIds) {
  RefMap map;
  EXPECT_EQ(map.add("x"), 0U);
  EXPECT_EQ(map.add("y"), 1U);
  EXPECT_EQ(map.add("x"), 0U);
  EXPECT_EQ(map.size(), 2U);
  EXPECT_EQ(map.idOf("y"), 1U);
  EXPECT_EQ(*map.nameOf(0), "x");
  EXPECT_EQ(quenfold::test::jsonOf(map), "[[0, \"x\"], [1, \"y\"]]");
}

TEST(RefMap, AddsAnewWhatWasChangedSince) {
  RefMap map;
  map.add("x");
  map.add("y");
  map.removeByName("y");
  EXPECT_EQ(map.add("y"), 1U);
  EXPECT_TRUE(map.contains("y"));
  map.removeById(1);
  EXPECT_EQ(map.add("y"), 1U);
  EXPECT_EQ(map.rename("y", "z"), 0);
  EXPECT_EQ(map.add("y"), 2U);
  EXPECT_EQ(map.changeId(2, 9), 0);
  EXPECT_EQ(map.add("y"), 9U);
  EXPECT_EQ(map.add("a"), 3U);
  map.renumber();
  EXPECT_EQ(map.add("a"), 0U);
  map.fromJson(*quenfold::parseCJson(R"([[7, "a"]])"));
  EXPECT_EQ(map.add("a"), 7U);
  map.clear();
  EXPECT_EQ(map.add("a"), 0U);
  EXPECT_EQ(map.size(), 1U);
}

TEST(RefMap, TheEmptyNameIsANameToo) {
  RefMap map;
  EXPECT_EQ(map.add("x"), 0U);
  EXPECT_EQ(map.add(""), 1U);
  EXPECT_EQ(map.add(""), 1U);
  EXPECT_EQ(map.add("x"), 0U);
  EXPECT_EQ(textOf(map), "0=x; 1=; ");
}

TEST(RefMap, TellsWhatItContains) {
  const RefMap map = mapOf({"x"});
  EXPECT_TRUE(map.contains("x"));
  EXPECT_FALSE(map.contains("X"));
  EXPECT_TRUE(map.containsId(0));
  EXPECT_FALSE(map.containsId(1));
  EXPECT_EQ(map.nameOf(1), nullptr);
}

TEST(RefMap, IdOfAnUnknownNameIs1) {
  EXPECT_EQ(RefMap().idOf("nobody"), 1U);
  EXPECT_EQ(mapOf({"a", "b"}).idOf("nobody"), 1U);
}

TEST(RefMap, RemovesByNameAndById) {
  RefMap map = mapOf({"a", "b", "c"});
  EXPECT_EQ(map.removeByName("z"), 1);
  EXPECT_EQ(map.removeById(3), 1);
  EXPECT_EQ(map.removeByName("b"), 0);
  EXPECT_EQ(map.removeById(2), 0);
  EXPECT_EQ(textOf(map), "0=a; ");
  EXPECT_FALSE(map.contains("b"));
  EXPECT_FALSE(map.contains("c"));
}

TEST(RefMap, RenameKeepsTheId) {
  RefMap map = mapOf({"a", "b"});
  EXPECT_EQ(map.rename("a", "a"), 1);
  EXPECT_EQ(map.rename("z", "y"), 1);
  EXPECT_EQ(map.rename("a", "b"), 1);
  EXPECT_EQ(textOf(map), "0=a; 1=b; ");
  EXPECT_EQ(map.rename("a", "z"), 0);
  EXPECT_EQ(textOf(map), "0=z; 1=b; ");
  EXPECT_FALSE(map.contains("a"));
  EXPECT_EQ(map.idOf("z"), 0U);
}

TEST(RefMap, ChangeIdKeepsTheName) {
  RefMap map = mapOf({"a", "b"});
  EXPECT_EQ(map.changeId(0, 0), 1);
  EXPECT_EQ(map.changeId(5, 6), 1);
  EXPECT_EQ(map.changeId(0, 1), 1);
  EXPECT_EQ(textOf(map), "0=a; 1=b; ");
  EXPECT_EQ(map.changeId(0, 31), 0);
  EXPECT_EQ(textOf(map), "1=b; 1F=a; ");
  EXPECT_EQ(map.idOf("a"), 31U);
}

TEST(RefMap, RenumbersInOrderOfNames) {
  RefMap map = mapOf({"b", "c", "a"});
  map.renumber();
  EXPECT_EQ(textOf(map), "0=a; 1=b; 2=c; ");
  EXPECT_EQ(map.idOf("c"), 2U);
}

TEST(RefMap, ClearsBothDirections) {
  RefMap map = mapOf({"a"});
  map.clear();
  EXPECT_EQ(map.size(), 0U);
  EXPECT_FALSE(map.contains("a"));
}

TEST(RefMap, DumpPutsABlankAfterEveryEntryByDefault) {
  testing::internal::CaptureStdout();
  mapOf({"a", "b"}).dump();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "0=a 1=b \n");
}

TEST(RefMap, LoadsGapsAsTheyCome) {
  EXPECT_EQ(textOf(loaded(R"([[7, "g"], [2, "b"]])")), "2=b; 7=g; ");
}

TEST(RefMap, LoadsIdsCutAndLimited) {
  EXPECT_EQ(textOf(loaded(R"([[-3, "n"]])")), "0=n; ");
  EXPECT_EQ(textOf(loaded(R"([[2.9, "f"]])")), "2=f; ");
  EXPECT_EQ(textOf(loaded(R"([[1e300, "h"]])")), "FFFFFFFF=h; ");
  EXPECT_EQ(textOf(loaded(R"([["9", "t"]])")), "0=t; ");
}

TEST(RefMap, LoadingSkipsWhatIsNoPair) {
  EXPECT_EQ(textOf(loaded(R"([5, "x", [], [1], [1, 2], [1, null], {"a": 1, "b": "x"},
                               [3, "kept", "more"]])")),
            "3=kept; ");
  EXPECT_EQ(loaded("5").size(), 0U);
  EXPECT_EQ(loaded("[[1]]").size(), 0U);
}

TEST(RefMap, LoadingReplacesEverything) {
  RefMap map = mapOf({"old"});
  map.fromJson(*quenfold::parseCJson(R"([[4, "new"]])"));
  EXPECT_EQ(textOf(map), "4=new; ");
  EXPECT_FALSE(map.contains("old"));
}

TEST(RefMap, LaterDuplicatesWinInTheirDirection) {
  const RefMap sameId = loaded(R"([[1, "a"], [1, "b"]])");
  EXPECT_EQ(textOf(sameId), "1=b; ");
  EXPECT_EQ(sameId.idOf("a"), 1U);
  const RefMap sameName = loaded(R"([[3, "a"], [5, "a"]])");
  EXPECT_EQ(textOf(sameName), "3=a; 5=a; ");
  EXPECT_EQ(sameName.idOf("a"), 5U);
}

TEST(RefMap, AddAfterLoadingMayTakeAnIdInUse) {
  RefMap map = loaded(R"([[1, "a"], [2, "b"]])");
  EXPECT_EQ(map.add("c"), 2U);
  EXPECT_EQ(textOf(map), "1=a; 2=c; ");
  EXPECT_EQ(map.idOf("b"), 2U);
}

TEST(RefMap, MayBeDerivedFrom) { EXPECT_TRUE(std::has_virtual_destructor_v<RefMap>); }

}  // namespace
}  // namespace VelDB
