#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "support/scratch_path.h"

namespace quenfold::test {

/// A folder of its own for one test.
class ScratchFolder {
 public:
  [[nodiscard]] std::string path() const { return folder_.path().string(); }
  [[nodiscard]] std::string path(std::string_view name) const {
    return (folder_.path() / name).string();
  }

  /// Writes the bytes and gives the file's path.
  [[nodiscard]] std::string file(std::string_view name, std::string_view bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
  }

  /// The bytes of a file, newline characters included.
  [[nodiscard]] std::string bytesOf(std::string_view name) const {
    std::ifstream in(path(name), std::ios::binary);
    EXPECT_TRUE(in) << name;
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
  }

 private:
  ScratchPath folder_;
};

/// Dates a file or folder 2040, later than 32 bits of seconds reach.
inline void date2040(const std::string& path) {
  timespec date = {};
  date.tv_sec = 2208988800;
  const std::array<timespec, 2> dates = {date, date};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), dates.data(), 0), 0) << path;
  struct stat status = {};
  ASSERT_EQ(stat(path.c_str(), &status), 0) << path;
  ASSERT_EQ(status.st_mtime, date.tv_sec) << path;
}

/// The message of the standard exception that the call throws; a test failure when there is none.
template <typename Call>
std::string messageOf(Call call) {
  try {
    call();
  } catch (const std::exception& failure) {
    return failure.what();
  }
  ADD_FAILURE() << "nothing was thrown";
  return {};
}

/// What the call writes to standard error.
template <typename Call>
std::string standardErrorOf(Call call) {
  testing::internal::CaptureStderr();
  call();
  return testing::internal::GetCapturedStderr();
}

}  // namespace quenfold::test
