// Inputs at the limit of their size and one byte beyond, built with limits 4,096 times smaller: the
// program's own take gigabytes (scripts/test-large).

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "app/files.h"
#include "app/limits.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

static_assert(kMaxTextBytes == 2097152);

/// A pipe that so many zero bytes come out of.
class Pipe {
 public:
  explicit Pipe(std::uint64_t bytes)
      : end_(popen(("head -c " + std::to_string(bytes) + " /dev/zero 2>/dev/null").c_str(), "r")) {}
  ~Pipe() { pclose(end_); }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  [[nodiscard]] int descriptor() const { return fileno(end_); }
  [[nodiscard]] std::string path() const { return "/dev/fd/" + std::to_string(descriptor()); }

 private:
  FILE* end_;
};

/// While it lives, standard input is another file.
class StandardInput {
 public:
  explicit StandardInput(int descriptor) : saved_(dup(STDIN_FILENO)) {
    dup2(descriptor, STDIN_FILENO);
  }
  ~StandardInput() {
    dup2(saved_, STDIN_FILENO);
    close(saved_);
  }
  StandardInput(const StandardInput&) = delete;
  StandardInput& operator=(const StandardInput&) = delete;

 private:
  int saved_;
};

std::string sparseFile(const test::ScratchFolder& scratch, std::uint64_t bytes) {
  std::string path = scratch.file("sparse", "");
  EXPECT_EQ(truncate(path.c_str(), static_cast<off_t>(bytes)), 0);
  return path;
}

template <typename Read>
void expectTooLarge(Read read, const std::string& name) {
  EXPECT_EQ(test::messageOf(read), "file too large: " + name);
}

TEST(AtTheLimit, APipeIsReadWhole) {
  const Pipe pipe(kMaxTextBytes);
  EXPECT_EQ(readFile(pipe.path()).size(), kMaxTextBytes);
}

TEST(AtTheLimit, StandardInputIsReadWhole) {
  const Pipe pipe(kMaxTextBytes);
  const StandardInput input(pipe.descriptor());
  EXPECT_EQ(readStandardInput().size(), kMaxTextBytes);
}

TEST(AtTheLimit, AFileIsReadWhole) {
  const test::ScratchFolder scratch;
  EXPECT_EQ(readFile(sparseFile(scratch, kMaxTextBytes)).size(), kMaxTextBytes);
}

TEST(OneByteBeyondTheLimit, APipeIsRefused) {
  const Pipe pipe(kMaxTextBytes + 1);
  expectTooLarge([&] { readFile(pipe.path()); }, pipe.path());
}

TEST(OneByteBeyondTheLimit, StandardInputIsRefused) {
  const Pipe pipe(kMaxTextBytes + 1);
  const StandardInput input(pipe.descriptor());
  expectTooLarge([] { readStandardInput(); }, "standard input");
}

TEST(OneByteBeyondTheLimit, AFileIsRefused) {
  const test::ScratchFolder scratch;
  const std::string path = sparseFile(scratch, kMaxTextBytes + 1);
  expectTooLarge([&] { readFile(path); }, path);
}

}  // namespace
}  // namespace quenfold
