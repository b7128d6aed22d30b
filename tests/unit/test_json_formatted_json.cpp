#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

#include "generator/random.h"
#include "json/formatted_json.h"
#include "support/cjson_trees.h"

namespace quenfold {
namespace {

using generator::Random;
using test::CJsonHandle;

/// What writing one value gives.
template <typename Write>
std::string textOf(Write write) {
  FormattedJson json;
  write(json);
  return json.take();
}

std::string quoted(std::string_view text) {
  return textOf([&](FormattedJson& json) { json.string(text); });
}

TEST(FormattedJson, PutsMembersOnLinesAndElementsOnOne) {
  const std::string text = textOf([](FormattedJson& json) {
    json.beginObject();
    json.key("a");
    json.number(1);
    json.key("list");
    json.beginArray();
    json.string("x");
    json.beginObject();
    json.key("b");
    json.string("");
    json.endObject();
    json.number(-2);
    json.endArray();
    json.endObject();
  });
  EXPECT_EQ(text, "{\n\t\"a\":\t1,\n\t\"list\":\t[\"x\", {\n\t\t\t\"b\":\t\"\"\n\t\t}, -2]\n}");
}

TEST(FormattedJson, WritesWhatIsEmpty) {
  const std::string text = textOf([](FormattedJson& json) {
    json.beginArray();
    json.beginObject();
    json.endObject();
    json.beginArray();
    json.endArray();
    json.endArray();
  });
  EXPECT_EQ(text, "[{\n\t}, []]");
}

TEST(FormattedJson, EscapesAsLittleAsItMust) {
  EXPECT_EQ(quoted("\"\\\b\f\n\r\t"), R"("\"\\\b\f\n\r\t")");
  EXPECT_EQ(quoted("\x01\x0b\x1f"), R"("\u0001\u000b\u001f")");
  EXPECT_EQ(quoted("a/\x7f\xc3\xa9\xff"), "\"a/\x7f\xc3\xa9\xff\"");
  EXPECT_EQ(quoted("no\nend\n"), R"("no\nend\n")");
  EXPECT_EQ(textOf([](FormattedJson& json) {
              json.beginObject();
              json.key("\"\t");
              json.number(0);
              json.endObject();
            }),
            "{\n\t\"\\\"\\t\":\t0\n}");
}

TEST(FormattedJson, WritesNumbersOf32Bits) {
  const std::string text = textOf([](FormattedJson& json) {
    json.beginArray();
    json.number(std::numeric_limits<std::int32_t>::min());
    json.number(std::numeric_limits<std::int32_t>::max());
    json.number(std::numeric_limits<std::uint32_t>::max());
    json.endArray();
  });
  EXPECT_EQ(text, "[-2147483648, 2147483647, 4294967295]");
}

std::string randomText(Random& random) {
  std::string text(random.below(12), '\0');
  for (char& c : text) {
    // Every second byte is one of those with a meaning of their own.
    c = static_cast<char>(random.percent(50)   ? random.between(1, 255)
                          : random.percent(50) ? random.between(1, 0x1f)
                                               : '"');
  }
  return text;
}

CJsonHandle randomNumber(FormattedJson& json, Random& random) {
  const std::uint32_t number = random.between(1, 0xffffffffU) >> random.below(32);
  if (random.percent(50)) {
    json.number(number);
    return test::cjsonNumber(number);
  }
  const auto withSign = static_cast<std::int32_t>(number);
  json.number(withSign);
  return test::cjsonNumber(withSign);
}

CJsonHandle randomValue(FormattedJson& json, Random& random, int depth);

CJsonHandle randomObject(FormattedJson& json, Random& random, int depth) {
  CJsonHandle object = test::cjsonObject();
  json.beginObject();
  for (std::uint32_t left = random.below(4); left > 0; --left) {
    const std::string name = randomText(random);
    json.key(name);
    test::addMember(*object, name, randomValue(json, random, depth + 1));
  }
  json.endObject();
  return object;
}

CJsonHandle randomArray(FormattedJson& json, Random& random, int depth) {
  CJsonHandle array = test::cjsonArray();
  json.beginArray();
  for (std::uint32_t left = random.below(4); left > 0; --left) {
    test::addElement(*array, randomValue(json, random, depth + 1));
  }
  json.endArray();
  return array;
}

/// A value written to `json` and built as a tree.
CJsonHandle randomValue(FormattedJson& json, Random& random, int depth) {
  constexpr int kDeepest = 6;
  switch (random.below(depth < kDeepest ? 4 : 2)) {
    case 0:
      return randomNumber(json, random);
    case 1: {
      const std::string text = randomText(random);
      json.string(text);
      return test::cjsonString(text);
    }
    case 2:
      return randomArray(json, random, depth);
    default:
      return randomObject(json, random, depth);
  }
}

TEST(FormattedJson, WritesWhatTheLibraryPrints) {
  Random random = generator::seededRandom(1);
  std::size_t bytes = 0;
  for (int round = 0; round < 20000; ++round) {
    FormattedJson json;
    const CJsonHandle tree = randomValue(json, random, 0);
    const std::string text = json.take();
    ASSERT_EQ(text, test::printCJson(*tree)) << "round " << round;
    bytes += text.size();
  }
  EXPECT_GT(bytes, 200000U);
}

}  // namespace
}  // namespace quenfold
