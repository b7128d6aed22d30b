#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

/// One run of the target on an input; the name is the fuzzer's.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// What every fuzz target is made of: a target is one `fuzzOne` and nothing else.
namespace quenfold::fuzz {

/// Does with one input what the target is about. A std::exception is a proper outcome, as it is for
/// the program's main; anything else thrown, and what the sanitizers find, ends the process.
/// Standard error is discarded meanwhile. The input's last byte is the last that may be read.
void fuzzOne(std::string_view input);

/// Ends the process with the message unless the property holds.
void require(bool holds, std::string_view property);

/// Ends the process with both texts unless they are equal.
void requireEqual(std::string_view left, std::string_view right, std::string_view property);

/// For what may not fail: ends the process with the message of a std::exception.
template <typename Body>
auto mustSucceed(Body body) {
  try {
    return body();
  } catch (const std::exception& failure) {
    require(false, std::string("nothing is thrown: ") + failure.what());
    throw;
  }
}

}  // namespace quenfold::fuzz
