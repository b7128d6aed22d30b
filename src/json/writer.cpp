#include "json/writer.h"

namespace quenfold {

// Not by GetString(): it makes room for a terminating zero, which can fail between two output
// files.
std::string_view textOf(const JsonBuffer& buffer) {
  return {buffer.stack_.Bottom<char>(), buffer.GetSize()};
}

}  // namespace quenfold
