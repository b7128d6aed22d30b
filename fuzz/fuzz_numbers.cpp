// The input is a number's text, read in several bases beside the C library, then cut at its dots.

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "app/text.h"
#include "target.h"

namespace quenfold {
namespace {

constexpr std::array<int, 9> kBases = {0, 2, 8, 10, 16, 36, 1, 37, -1};

/// What the C library reads with 64 bits; beyond 32 bits is beyond the limits in any case.
struct LibraryNumber {
  bool found = false;
  std::int64_t value = 0;
};

LibraryNumber readByLibrary(const std::string& text, int base) {
  char* end = nullptr;
  errno = 0;
  const long long value = std::strtoll(text.c_str(), &end, base);  // NOLINT(google-runtime-int)
  const bool badBase = errno == EINVAL;
  return badBase || end == text.c_str() ? LibraryNumber{} : LibraryNumber{true, value};
}

void checkSigned(std::string_view text, int base, const LibraryNumber& expected) {
  using Limits = std::numeric_limits<std::int32_t>;
  std::int32_t value = -7;
  const bool parsed = parseSigned(text, value, base);
  const bool fits = expected.value >= Limits::min() && expected.value <= Limits::max();
  const std::int64_t limit = expected.value < 0 ? Limits::min() : Limits::max();
  fuzz::require(parsed == (expected.found && fits), "parseSigned accepts what strtol does");
  fuzz::require(value == (fits ? expected.value : limit), "parseSigned gives strtol's value");
}

void checkUnsigned(std::string_view text, int base, const LibraryNumber& expected) {
  constexpr std::int64_t kMax = std::numeric_limits<std::uint32_t>::max();
  std::uint32_t value = 7;
  const bool parsed = parseUnsigned(text, value, base);
  const bool fits = expected.value >= -kMax && expected.value <= kMax;
  fuzz::require(parsed == (expected.found && fits), "parseUnsigned accepts what strtoul does");
  fuzz::require(value == static_cast<std::uint32_t>(fits ? expected.value : kMax),
                "parseUnsigned gives strtoul's value");
}

void checkSplit(std::string_view text) {
  const std::vector<std::string> pieces = split(text, '.');
  std::string joined = pieces.front();
  for (std::size_t i = 1; i < pieces.size(); ++i) {
    joined.append(".").append(pieces[i]);
  }
  fuzz::requireEqual(joined, text, "the pieces joined are the text");
  if (pieces.size() > 5) {
    return;
  }
  const std::array<TokenRange, 5> cuts = split_itr(text, '.');
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    fuzz::requireEqual(text.substr(cuts.at(i).begin, cuts.at(i).end - cuts.at(i).begin), pieces[i],
                       "split_itr cuts as split does");
  }
}

}  // namespace
}  // namespace quenfold

namespace quenfold::fuzz {
namespace {

void fuzzNumbers(std::string_view input) {
  // The C library stops at a zero byte wherever it stands.
  const std::string text(input);
  for (const int base : kBases) {
    const LibraryNumber expected = readByLibrary(text, base);
    checkSigned(input, base, expected);
    checkUnsigned(input, base, expected);
  }
  std::uint32_t whole = 0;
  std::uint32_t value = 0;
  require(!parseWholeUnsigned(input, whole) || (parseUnsigned(input, value, 10) && value == whole),
          "a whole number is a number");
  checkSplit(input);
  static_cast<void>(split_itr(input, '.'));  // throws for more than five pieces
}

const Target kNumbers("numbers", fuzzNumbers);

}  // namespace
}  // namespace quenfold::fuzz
