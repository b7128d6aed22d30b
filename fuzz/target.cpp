#include "target.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <streambuf>
#include <utility>

namespace quenfold::fuzz {
namespace {

/// The targets, each of which leads to the next. Set before the first of them is made.
const Target* allTargets = nullptr;

Target::FuzzOne chosenTarget() {
  const char* const name = std::getenv("QUENFOLD_FUZZ_TARGET");
  const Target::FuzzOne chosen = Target::find(name == nullptr ? "" : name);
  if (chosen == nullptr) {
    std::cerr << "QUENFOLD_FUZZ_TARGET names no fuzz target" << std::endl;
    std::exit(2);
  }
  return chosen;
}

class DiscardBuffer : public std::streambuf {
 protected:
  int_type overflow(int_type character) override { return traits_type::not_eof(character); }
  std::streamsize xsputn(const char* /*text*/, std::streamsize count) override { return count; }
};

/// Warnings about the input are expected, and there are many inputs.
class QuietStandardError {
 public:
  QuietStandardError() : before_(std::cerr.rdbuf(&discard_)) {}
  ~QuietStandardError() { std::cerr.rdbuf(before_); }
  QuietStandardError(const QuietStandardError&) = delete;
  QuietStandardError& operator=(const QuietStandardError&) = delete;

 private:
  DiscardBuffer discard_;
  std::streambuf* before_;
};

/// Past the discarding buffer, which is in place when a property is violated.
std::streambuf* const kStandardError = std::cerr.rdbuf();

}  // namespace

Target::Target(std::string_view name, FuzzOne fuzzOne) noexcept
    : name_(name), fuzzOne_(fuzzOne), others_(std::exchange(allTargets, this)) {}

Target::FuzzOne Target::find(std::string_view name) {
  const Target* target = allTargets;
  while (target != nullptr && target->name_ != name) {
    target = target->others_;
  }
  return target == nullptr ? nullptr : target->fuzzOne_;
}

void require(bool holds, std::string_view property) {
  if (!holds) {
    std::ostream(kStandardError) << "violated: " << property << std::endl;
    std::abort();
  }
}

void requireEqual(std::string_view left, std::string_view right, std::string_view property) {
  if (left != right) {
    std::ostream(kStandardError) << "--- one text, " << left.size() << " bytes\n"
                                 << left << "\n--- the other, " << right.size() << " bytes\n"
                                 << right << '\n';
    require(false, property);
  }
}

}  // namespace quenfold::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const quenfold::fuzz::Target::FuzzOne fuzzOne = quenfold::fuzz::chosenTarget();
  const quenfold::fuzz::QuietStandardError quiet;
  try {
    fuzzOne({reinterpret_cast<const char*>(data), size});
  } catch (const std::exception&) {
    // The run's proper end.
  }
  return 0;
}
