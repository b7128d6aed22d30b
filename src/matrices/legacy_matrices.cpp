#include "matrices/legacy_matrices.h"

#include "matrices/legacy_handler.h"

namespace quenfold::packing {

LegacyMatrices parseLegacyMatrices(std::string& text) {
  LegacyMatrices file;
  LegacyHandler handler(file);
  if (!parseJsonEvents(text, handler)) {
    return {};
  }
  return file;
}

}  // namespace quenfold::packing
