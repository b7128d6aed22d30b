#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "app/files.h"
#include "app/text.h"
#include "json/cjson_tree.h"
#include "json/document.h"
#include "support/compact_json.h"

namespace quenfold {
namespace {

/// The examples without their newline characters.
std::string exampleText(std::string_view name) {
  return readFile(joinPath(QUENFOLD_EXAMPLES, name));
}

std::string compact(std::string text) { return test::compactJson(parseJson(text)); }

/// What a logical input or output can name, and the port key behind it: a user's label, or the key
/// of a port that has none.
std::map<std::string, std::string> portNames() {
  std::string text = exampleText("matrices.json");
  const JsonDocument document = parseJson(text);
  std::map<std::string, std::string> names;
  for (const JsonValue& matrix : document["Config"]["Matrices"].GetArray()) {
    for (const JsonValue& port : matrix["ports"].GetArray()) {
      const bool added = names.emplace(port["label"].GetString(), port["port"].GetString()).second;
      EXPECT_TRUE(added) << port["label"].GetString();
    }
  }
  return names;
}

/// "AUXA-in" of "MCR.slot10.AUXA-in[1].audio.ch1".
std::string prefixOf(const std::string& key) {
  const std::string port = split(key, '.')[2];
  return port.substr(0, port.find('['));
}

/// The port prefixes that a table names; every name must be one of a port.
std::set<std::string> prefixesNamedBy(const char* file, const char* table, const char* records,
                                      const char* ports) {
  const std::map<std::string, std::string> names = portNames();
  std::string text = exampleText(file);
  const JsonDocument document = parseJson(text);
  std::set<std::string> prefixes;
  for (const JsonValue& record : document[table][records].GetArray()) {
    EXPECT_EQ(record[ports].Size(), document[table]["levelKeys"].Size());
    for (const JsonValue& port : record[ports].GetArray()) {
      const auto found = names.find(port.GetString());
      if (found != names.end()) {
        prefixes.insert(prefixOf(found->second));
      } else {
        EXPECT_STREQ(port.GetString(), "");
      }
    }
  }
  return prefixes;
}

TEST(Examples, MatricesHaveNoWhiteSpace) {
  const std::string text = exampleText("matrices.json");
  EXPECT_EQ(text, compact(text));
}

TEST(Examples, MatricesAscendAndCount) {
  std::string text = exampleText("matrices.json");
  const JsonDocument document = parseJson(text);
  std::string last;
  int next = 0;
  for (const JsonValue& matrix : document["Config"]["Matrices"].GetArray()) {
    EXPECT_EQ(matrix["id"].GetInt(), next++);
    EXPECT_LT(last, matrix["name"].GetString());
    last = matrix["name"].GetString();
    EXPECT_FALSE(matrix["ports"].Empty());
  }
  EXPECT_EQ(next, 11);
}

TEST(Examples, SourcesNamePortsOfEveryKind) {
  EXPECT_EQ(prefixesNamedBy("sources.json", "LogicalSources", "LogicalSource", "val"),
            (std::set<std::string>{"AUXA-in", "AUXB-in", "disconnect", "in", "layout:quad",
                                   "mixer-out", "mixerd-out", "passthrough", "virt-in"}));
}

TEST(Examples, DestinationsNamePortsOfEveryKind) {
  EXPECT_EQ(
      prefixesNamedBy("destinations.json", "LogicalDestinations", "LogicalDestination", "oid"),
      (std::set<std::string>{"AUXA-out", "AUXB-out", "head1-in", "mixer-in", "out", "pip1-in",
                             "pip2-in", "virt-out"}));
}

TEST(Examples, LogicalTablesHaveThePrintedLayout) {
  for (const char* const file : {"sources.json", "destinations.json"}) {
    CJsonDocument tree = parseCJson(exampleText(file));
    ASSERT_TRUE(tree) << file;
    std::string oneLine;
    for (const std::string& line : split(printed(std::move(tree)), '\n')) {
      oneLine += line;
    }
    EXPECT_EQ(oneLine, exampleText(file));
  }
}

}  // namespace
}  // namespace quenfold
