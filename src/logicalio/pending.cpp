#include "app/error.h"
#include "logicalio/pack.h"
#include "logicalio/unpack.h"

namespace quenfold {

std::uint32_t convertVelmoraToPacked(const std::string& /*sourceDir*/,
                                     const std::string& /*inputName*/,
                                     const std::string& /*inputText*/,
                                     const std::string& /*outputDir*/) {
  throw runtimeError("packing logical IO is not supported yet");
}

std::pair<std::string, std::string> convertPackedToVelmora(const std::string& /*stem*/,
                                                           const std::string& /*directory*/) {
  throw runtimeError("unpacking logical IO is not supported yet");
}

}  // namespace quenfold
