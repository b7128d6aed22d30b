#pragma once

#include <cjson/cJSON.h>

#include <memory>
#include <string>

#include "json/block_allocator.h"

namespace quenfold {

struct CJsonBlocksDeleter {
  std::unique_ptr<BlockAllocator> blocks;
  void operator()(const cJSON* /*tree*/) { blocks.reset(); }
};

/// Owns a whole cJSON tree that was parsed, with the blocks that it lies in, all freed at once. Not
/// to be changed, and no part of it can be handed over to another tree. Any number of them live
/// side by side.
using CJsonDocument = std::unique_ptr<const cJSON, CJsonBlocksDeleter>;

/// Parses as cJSON_Parse does: up to the end of the first value, at most 1000 levels deep. Empty
/// when the text is not JSON; cJSON_GetErrorPtr() then points into `text`. Throws std::bad_alloc
/// when memory ran out, which cJSON itself does not tell apart. The document does not need the
/// text.
CJsonDocument parseCJson(const std::string& text);

}  // namespace quenfold
