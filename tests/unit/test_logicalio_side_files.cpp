#include <gtest/gtest.h>

#include <new>

#include "logicalio/side_files.h"
#include "support/failing_memory.h"
#include "support/scratch.h"
#include "support/written_json.h"

namespace quenfold {
namespace {

LabelMap labelsOf(std::string_view json) {
  const test::ScratchFolder scratch;
  return parseLabelMap(scratch.file("x", json));
}

std::string shownCategories(std::string_view json) {
  const test::ScratchFolder scratch;
  std::string out;
  for (const auto& [id, entries] : parseLegacyCategoryMap(scratch.file("x", json))) {
    out += std::to_string(id) + ":";
    for (const CatEntry& entry : entries) {
      out += (entry.isText ? "'" : "<") + catEntryText(entry) + (entry.isText ? "'" : ">");
    }
    out += " ";
  }
  return out;
}

/// The part of the notice that tells the fault.
std::string labelFault(std::string_view json) {
  bool empty = false;
  const std::string notice = test::standardErrorOf([&] { empty = labelsOf(json).empty(); });
  EXPECT_TRUE(empty) << json;
  const std::string before = "Error parsing Label map: ";
  const std::string after = " - Assuming monolithic file.\n";
  EXPECT_EQ(notice.substr(0, before.size()), before);
  EXPECT_EQ(notice.substr(notice.size() - after.size()), after);
  return notice.substr(before.size(), notice.size() - before.size() - after.size());
}

std::string categoryNotice(std::string_view json) {
  return test::standardErrorOf([&] { EXPECT_EQ(shownCategories(json), "") << json; });
}

std::string categoryNoticeOf(const std::string& fault) {
  return "Error parsing Legacy Category map: " + fault + " - Assuming monolithic file.\n";
}

TEST(ParseLabelMap, MapsIdToLabel) {
  EXPECT_EQ(labelsOf(R"({"x": {"version": 10, "hash": 1, "labels": [[7, "Cam"], [2, ""]]}})"),
            (LabelMap{{2, ""}, {7, "Cam"}}));
  EXPECT_TRUE(labelsOf(R"({"x": {"labels": []}})").empty());
}

TEST(ParseLabelMap, TakesTheFirstMemberWhateverItsName) {
  EXPECT_EQ(labelsOf(R"({"": {"LABELS": [[1, "a"]]}, "xLabels": {"labels": [[2, "b"]]}})"),
            (LabelMap{{1, "a"}}));
  EXPECT_EQ(labelsOf(R"([{"labels": [[1, "a"]]}])"), (LabelMap{{1, "a"}}));
}

TEST(ParseLabelMap, TheLastOfARepeatedIdWins) {
  EXPECT_EQ(labelsOf(R"({"x": {"labels": [[1, "a"], [1, "b"], [1.9, "c"]]}})"),
            (LabelMap{{1, "c"}}));
}

TEST(ParseLabelMap, NegativeIdsAreUnsignedKeys) {
  EXPECT_EQ(labelsOf(R"({"x": {"labels": [[-1, "a"], [1e20, "b"]]}})"),
            (LabelMap{{2147483647, "b"}, {4294967295U, "a"}}));
}

TEST(ParseLabelMap, WalksAnyChildren) {
  EXPECT_EQ(labelsOf(R"({"x": {"labels": {"a": [1, "a"]}}})"), (LabelMap{{1, "a"}}));
  EXPECT_EQ(test::standardErrorOf([] { EXPECT_TRUE(labelsOf(R"({"x":{"labels":5}})").empty()); }),
            "");
}

TEST(ParseLabelMap, ReportsEachFault) {
  EXPECT_EQ(labelFault("nonsense"), "JSON parse error");
  EXPECT_EQ(labelFault(std::string(200000, '[')), "JSON parse error");
  EXPECT_EQ(labelFault("{}"), "JSON container not found error");
  EXPECT_EQ(labelFault("5"), "JSON container not found error");
  EXPECT_EQ(labelFault(R"({"x": {}})"), "JSON labels array not found error");
  EXPECT_EQ(labelFault(R"({"x": 5, "labels": []})"), "JSON labels array not found error");
  EXPECT_EQ(labelFault(R"({"x": {"labels": [5]}})"), "Label entry is not array");
  EXPECT_EQ(labelFault(R"({"x": {"labels": [{"a": 1, "b": "x"}]}})"), "Label entry is not array");
  EXPECT_EQ(labelFault(R"({"x": {"labels": [[]]}})"), "Label entry size must be 2");
  EXPECT_EQ(labelFault(R"({"x": {"labels": [[1]]}})"), "Label entry size must be 2");
  EXPECT_EQ(labelFault(R"({"x": {"labels": [[1, "a", 2]]}})"), "Label entry size must be 2");
  EXPECT_EQ(labelFault(R"({"x": {"labels": [["1", 5]]}})"), "id is not number");
  EXPECT_EQ(labelFault(R"({"x": {"labels": [[1, 5]]}})"), "label is not string");
  EXPECT_EQ(labelFault(R"({"x": {"labels": [[1, null]]}})"), "label is not string");
}

TEST(ParseLabelMap, AnErrorHalfwayLeavesTheWholeMapEmpty) {
  EXPECT_EQ(labelFault(R"({"x": {"labels": [[1, "a"], [2, "b"], [3, 4]]}})"),
            "label is not string");
}

TEST(ParseLabelMap, NoticesAMissingFile) {
  EXPECT_EQ(test::standardErrorOf([] { parseLabelMap("no-such-folder/x"); }),
            "Error parsing Label map: error while opening file: no-such-folder/x"
            " - Assuming monolithic file.\n");
}

TEST(ParseLegacyCategoryMap, MapsIdToEntries) {
  EXPECT_EQ(shownCategories(
                R"({"x": {"legacyCategories": [[7, [5, "Show", "6", ""]], [2, []], [-1, [1]]]}})"),
            "2: 7:<5>'Show''6''' 4294967295:<1> ");
  EXPECT_EQ(shownCategories(R"({"x": {"legacyCategories": [[7, [1]], [7, [2]]]}})"), "7:<2> ");
}

TEST(ParseLegacyCategoryMap, ReportsEachFault) {
  EXPECT_EQ(categoryNotice("["), categoryNoticeOf("JSON parse error"));
  EXPECT_EQ(categoryNotice(std::string(200000, '[')), categoryNoticeOf("JSON parse error"));
  EXPECT_EQ(categoryNotice("[]"), categoryNoticeOf("JSON container not found error"));
  EXPECT_EQ(categoryNotice(R"({"x": {"labels": []}})"),
            categoryNoticeOf("JSON legacyCategories array not found error"));
  const auto entryNotice = [](const std::string& entry) {
    return categoryNotice(R"({"x": {"legacyCategories": [[9, [1]], )" + entry + "]}}");
  };
  EXPECT_EQ(entryNotice("5"), categoryNoticeOf("catEntry is not array"));
  EXPECT_EQ(entryNotice("[1]"), categoryNoticeOf("catEntry size must be 2"));
  EXPECT_EQ(entryNotice("[null, []]"), categoryNoticeOf("id is not number"));
  EXPECT_EQ(entryNotice("[1, {}]"), categoryNoticeOf("category is not array"));
  EXPECT_EQ(entryNotice("[1, [true]]"), categoryNoticeOf("CatEntry JSON invalid object type"));
  EXPECT_EQ(entryNotice("[1, [null]]"), categoryNoticeOf("CatEntry JSON invalid object type"));
}

TEST(ParseLegacyCategoryMap, NoticesAMissingFile) {
  EXPECT_EQ(test::standardErrorOf([] { parseLegacyCategoryMap("no-such-folder/x"); }),
            categoryNoticeOf("error while opening file: no-such-folder/x"));
}

TEST(SideFiles, RunningOutOfMemoryIsNoFaultOfTheFile) {
  const test::ScratchFolder scratch;
  const std::string labels = scratch.file("labels", R"({"x": {"labels": [[1, "a"]]}})");
  const std::string categories = scratch.file("cats", R"({"x": {"legacyCategories": []}})");
  const test::FailingMemory exhausted(0);
  EXPECT_THROW(parseLabelMap(labels), std::bad_alloc);
  EXPECT_THROW(parseLegacyCategoryMap(categories), std::bad_alloc);
}

}  // namespace
}  // namespace quenfold
