#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

#include "logicalio/port_key.h"

namespace quenfold {
namespace {

constexpr std::int32_t kIntMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kIntMin = std::numeric_limits<std::int32_t>::min();

TEST(ScanPortKey, ReadsTheSixFields) {
  const auto key = scanPortKey("devA.slot0.in[12].mic.ch3");
  ASSERT_TRUE(key);
  EXPECT_EQ(key->device, "devA");
  EXPECT_EQ(key->slot, "slot0");
  EXPECT_EQ(key->port_prefix, "in");
  EXPECT_EQ(key->port_id, 12);
  EXPECT_EQ(key->type, "mic");
  EXPECT_EQ(key->ch, 3);
  EXPECT_EQ(printPortKey(*key), "devA.slot0.in[12].mic.ch3");
}

TEST(PortKeyText, IsClearUntilItIsScanned) { EXPECT_EQ(printPortKey(PortKeyText()), "..[0]..ch0"); }

TEST(ScanPortKey, TakesAnyCharactersInTexts) {
  const auto key = scanPortKey("d [1]. .a.b c[ +7].t y.ch \t-2 rest.of[it]");
  ASSERT_TRUE(key);
  EXPECT_EQ(printPortKey(*key), "d [1]. .a.b c[7].t y.ch-2");
}

TEST(ScanPortKey, RefusesWhatIsNoPortKey) {
  for (const char* text :
       {"", "x", "Vox", ".s.p[1].t.ch1", "d..p[1].t.ch1", "d.s.[1].t.ch1", "d.s.p[].t.ch1",
        "d.s.p[1].ch1", "d.s.p[1]..ch1", "d.s.p[1].t.c1", "d.s.p[1].t.ch", "d.s.p[1].t.chx",
        "d.s.p[1 ].t.ch1", "d.s.p[0x1].t.ch1", "d.s.p[- 1].t.ch1", "d.s.p1.t.ch1", "d.s.p[1]t.ch1",
        "d.s.p[1].t.Ch1", "d.s.p[1].t. ch1"}) {
    EXPECT_FALSE(scanPortKey(text)) << text;
  }
}

TEST(ScanPortKey, NumbersSaturateAsOnThe32BitTarget) {
  const auto numbers = [](const std::string& portId, const std::string& ch) {
    const std::string text = "d.s.p[" + portId + "].t.ch" + ch;
    const auto key = scanPortKey(text);
    EXPECT_TRUE(key) << text;
    return key ? std::pair(key->port_id, key->ch) : std::pair(0, 0);
  };
  EXPECT_EQ(numbers("2147483647", "-2147483648"), std::pair(kIntMax, kIntMin));
  EXPECT_EQ(numbers("2147483648", "-2147483649"), std::pair(kIntMax, kIntMin));
  EXPECT_EQ(numbers("4294967301", "-4294967301"), std::pair(kIntMax, kIntMin));
  EXPECT_EQ(numbers("99999999999999999999", "-99999999999999999999"), std::pair(kIntMax, kIntMin));
  EXPECT_EQ(numbers("007", "-0"), std::pair(7, 0));
}

struct Lengths {
  std::size_t device, slot, prefix, type, rest;
};

std::string keyOfLengths(const Lengths& lengths) {
  return std::string(lengths.device, 'd') + "." + std::string(lengths.slot, 's') + "." +
         std::string(lengths.prefix, 'p') + "[1]." + std::string(lengths.type, 't') + ".ch1" +
         std::string(lengths.rest, 'x');
}

TEST(ScanPortKey, RefusesFieldsBeyondTheirCapacity) {
  EXPECT_TRUE(scanPortKey(keyOfLengths({63, 1, 1, 1, 0})));
  EXPECT_FALSE(scanPortKey(keyOfLengths({64, 1, 1, 1, 0})));
  EXPECT_TRUE(scanPortKey(keyOfLengths({1, 63, 1, 1, 0})));
  EXPECT_FALSE(scanPortKey(keyOfLengths({1, 64, 1, 1, 0})));
  EXPECT_TRUE(scanPortKey(keyOfLengths({1, 1, 63, 1, 0})));
  EXPECT_FALSE(scanPortKey(keyOfLengths({1, 1, 64, 1, 0})));
  EXPECT_TRUE(scanPortKey(keyOfLengths({1, 1, 1, 15, 0})));
  EXPECT_FALSE(scanPortKey(keyOfLengths({1, 1, 1, 16, 0})));
}

TEST(ScanPortKey, RefusesAKeyBeyondItsCapacity) {
  const std::string longest = keyOfLengths({60, 60, 40, 15, 6});
  ASSERT_EQ(longest.size(), 191U);
  EXPECT_TRUE(scanPortKey(longest));
  EXPECT_FALSE(scanPortKey(longest + "x"));
}

TEST(IdKey, IsHexadecimalInUpperCase) {
  PortKeyIds ids;
  ids.device = 26;
  ids.slot = 0;
  ids.port_prefix = 1;
  ids.port_id = 4294967295U;
  ids.type = 3;
  ids.ch = 0xABCDEF;
  EXPECT_EQ(printIdKey(ids), "1A.0.1[FFFFFFFF].3.ABCDEF");
}

TEST(IdKey, IsReadFieldByField) {
  const PortKeyIds ids = scanIdKey("1A.0.1[FFFFFFFF].3.ABCDEF");
  EXPECT_EQ(ids.device, 26U);
  EXPECT_EQ(ids.slot, 0U);
  EXPECT_EQ(ids.port_prefix, 1U);
  EXPECT_EQ(ids.port_id, 4294967295U);
  EXPECT_EQ(ids.type, 3U);
  EXPECT_EQ(ids.ch, 0xABCDEFU);
}

/// What is read of a key, printed.
std::string reprinted(const std::string& idKey) { return printIdKey(scanIdKey(idKey)); }

constexpr const char* kNoIds = "0.0.0[0].0.0";

TEST(IdKey, HoldsTheLargestNumbers) {
  constexpr const char* kLargest = "FFFFFFFF.FFFFFFFF.FFFFFFFF[FFFFFFFF].FFFFFFFF.FFFFFFFF";
  EXPECT_EQ(reprinted(kLargest), kLargest);
}

TEST(IdKey, ANegativeNumberOf32BitsWraps) {
  EXPECT_EQ(reprinted("-1.-FFFFFFFE.-FFFFFFFF[-100000000].0.-0"), "FFFFFFFF.2.1[FFFFFFFF].0.0");
}

TEST(IdKey, FieldsFromTheFirstFaultOnAre0) {
  EXPECT_EQ(reprinted("1.2.3[4].5.6"), "1.2.3[4].5.6");
  EXPECT_EQ(reprinted("1.2.3[4].5.x"), "1.2.3[4].5.0");
  EXPECT_EQ(reprinted("1.2.3 [4].5.6"), "1.2.3[0].0.0");
  EXPECT_EQ(reprinted("1.2"), "1.2.0[0].0.0");
  EXPECT_EQ(reprinted(""), kNoIds);
  EXPECT_EQ(reprinted(".1.2[3].4.5"), kNoIds);
  EXPECT_EQ(reprinted("1.0xg.2[3].4.5"), "1.0.0[0].0.0");
  EXPECT_EQ(reprinted(" 0x1F.-1.+2[100000000].5.6rest"), "1F.FFFFFFFF.2[FFFFFFFF].5.6");
}

TEST(IdKey, RefusesAKeyBeyondItsCapacity) {
  const std::string longest = "1.2.3[4].5." + std::string(51, '0') + "6";
  ASSERT_EQ(longest.size(), 63U);
  EXPECT_EQ(reprinted(longest), "1.2.3[4].5.6");
  EXPECT_EQ(reprinted(longest + "x"), kNoIds);
}

// The C library as the judge, on pseudo-random keys with many faults in them.

constexpr int kRandomKeys = 100000;

class KeyMaker {
 public:
  std::string portKey() {
    return text(63) + punctuation('.') + text(63) + punctuation('.') + text(63) + punctuation('[') +
           number(false) + punctuation(']') + punctuation('.') + text(15) + punctuation('.') +
           literal("ch") + number(false) + pick({"", "", " ", "x", ".y", "5"});
  }

  std::string idKey() {
    return number(true) + punctuation('.') + number(true) + punctuation('.') + number(true) +
           punctuation('[') + number(true) + punctuation(']') + punctuation('.') + number(true) +
           punctuation('.') + number(true) + pick({"", "", "", "x", " "});
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }

  std::string pick(std::initializer_list<const char*> texts) {
    return *(texts.begin() + below(texts.size()));
  }

  std::string punctuation(char right) {
    return below(60) == 0 ? pick({"", " ", "[", "]", ".", ".."}) : std::string(1, right);
  }

  std::string literal(const char* right) {
    return below(40) == 0 ? pick({"", "c", "h", "CH", " ch", "ch "}) : right;
  }

  /// Mostly short; now and then around the capacity.
  std::string text(std::size_t capacity) {
    static constexpr std::string_view kCharacters = "abcXYZ019 _-+[]\t\xc3\xa9.";
    const std::size_t size = below(12) == 0 ? capacity - 2 + below(5) : below(9);
    std::string out;
    while (out.size() < size) {
      // The characters that end a text are rare.
      const std::size_t at = below(kCharacters.size());
      const bool ender = kCharacters[at] == '.' || kCharacters[at] == '[';
      out += ender && below(10) != 0 ? 'k' : kCharacters[at];
    }
    return out;
  }

  std::string number(bool hexadecimal) {
    const std::string digits = hexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
    std::string out = pick({"", "", "", "", "", "", " ", "\t ", "\v\f\r"});
    out += pick({"", "", "", "", "", "-", "+", "+-"});
    if (hexadecimal && below(10) == 0) {
      out += pick({"0x1", "0Xf"});
    }
    constexpr std::array<std::size_t, 13> kSizes = {1, 1, 1, 2, 3, 7, 8, 9, 10, 10, 11, 12, 25};
    const std::size_t size = below(50) == 0 ? 0 : kSizes.at(below(kSizes.size()));
    for (std::size_t i = 0; i < size; ++i) {
      out += digits[below(digits.size())];
    }
    return out;
  }

  std::mt19937 random_{20240917};
};

std::int32_t saturated(long value) {
  return static_cast<std::int32_t>(std::clamp<long>(value, kIntMin, kIntMax));
}

/// What "%X" gives where unsigned long has 32 bits, from what it gives with 64: a negative number
/// of 32 bits wraps, everything else beyond 32 bits is limited. Digits of 13 to 16 places, which
/// would look alike, are not made above.
std::uint32_t saturatedHex(std::uint64_t value) {
  constexpr std::uint64_t kMax = 0xFFFFFFFF;
  const bool fits = value <= kMax || 0 - value <= kMax;
  return static_cast<std::uint32_t>(fits ? value : kMax);
}

/// The fields as sscanf reads them, printed, or "no". A field that fills one byte more than its
/// capacity has been cut, which a key must never be.
std::string portKeyBySscanf(const std::string& key) {
  std::array<char, 65> device{};
  std::array<char, 65> slot{};
  std::array<char, 65> prefix{};
  std::array<char, 17> type{};
  long portId = 0;
  long ch = 0;
  // NOLINTNEXTLINE(cert-err34-c): the judge
  const int count =
      std::sscanf(key.c_str(), "%64[^.].%64[^.].%64[^[][%ld].%16[^.].ch%ld", device.data(),
                  slot.data(), prefix.data(), &portId, type.data(), &ch);
  const bool cut = device[63] != 0 || slot[63] != 0 || prefix[63] != 0 || type[15] != 0;
  if (count != 6 || cut || key.size() > 191) {
    return "no";
  }
  return printPortKey(
      {device.data(), slot.data(), prefix.data(), saturated(portId), type.data(), saturated(ch)});
}

TEST(ScanPortKey, AgreesWithSscanf) {
  KeyMaker keys;
  int scanned = 0;
  for (int i = 0; i < kRandomKeys; ++i) {
    const std::string key = keys.portKey();
    const auto fields = scanPortKey(key);
    scanned += fields ? 1 : 0;
    ASSERT_EQ(fields ? printPortKey(*fields) : "no", portKeyBySscanf(key)) << key;
  }
  EXPECT_GT(scanned, kRandomKeys / 10);
  EXPECT_LT(scanned, kRandomKeys / 10 * 9);
}

TEST(ScanIdKey, AgreesWithSscanf) {
  KeyMaker keys;
  int whole = 0;
  for (int i = 0; i < kRandomKeys; ++i) {
    const std::string key = keys.idKey();
    std::array<unsigned long, 6> read{};
    // NOLINTNEXTLINE(cert-err34-c): the judge
    const int count = std::sscanf(key.c_str(), "%lX.%lX.%lX[%lX].%lX.%lX", &read[0], &read[1],
                                  &read[2], &read[3], &read[4], &read[5]);
    PortKeyIds expected;
    if (key.size() <= 63) {
      expected = {saturatedHex(read[0]), saturatedHex(read[1]), saturatedHex(read[2]),
                  saturatedHex(read[3]), saturatedHex(read[4]), saturatedHex(read[5])};
      whole += count == 6 ? 1 : 0;
    }
    ASSERT_EQ(reprinted(key), printIdKey(expected)) << key;
  }
  EXPECT_GT(whole, kRandomKeys / 10);
  EXPECT_LT(whole, kRandomKeys / 10 * 9);
}

}  // namespace
}  // namespace quenfold
