#pragma once

#include <string>

#include "app/files.h"
#include "support/scratch.h"

namespace quenfold::test {

/// All that `produce` appends to a file.
template <typename Produce>
std::string textOf(Produce produce) {
  const ScratchFolder scratch;
  const std::string path = scratch.path("text");
  OutputFile out(path);
  produce(out);
  out.close();
  return scratch.bytesOf("text");
}

}  // namespace quenfold::test
