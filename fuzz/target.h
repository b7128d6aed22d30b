#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

/// One run on an input, of the target that the environment names in QUENFOLD_FUZZ_TARGET; ends the
/// process where it names none. The function's name is the fuzzer's.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// What every fuzz target is made of: a target is one constant of type Target in a file of its own.
namespace quenfold::fuzz {

/// A function that is given inputs, known by its name, which is its file's without "fuzz_" in
/// front.
class Target {
 public:
  /// Does with one input what the target is about. A std::exception is a proper outcome, as it is
  /// for the program's main; anything else thrown, and what the sanitizers find, ends the process.
  /// Standard error is discarded meanwhile. The input's last byte is the last that may be read.
  using FuzzOne = void (*)(std::string_view input);

  /// Both arguments, and the target, last as long as the process.
  Target(std::string_view name, FuzzOne fuzzOne) noexcept;

  /// The target's function, or null for an unknown name.
  static FuzzOne find(std::string_view name);

 private:
  std::string_view name_;
  FuzzOne fuzzOne_;
  const Target* others_;
};

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
