#pragma once

#include <cjson/cJSON.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "json/block_allocator.h"

namespace quenfold {

struct CJsonDeleter {
  void operator()(cJSON* tree) const { cJSON_Delete(tree); }
};

/// Owns a whole cJSON tree that was built, and frees it on every way out. Members and elements of
/// the tree are plain pointers, valid as long as the handle.
using CJsonHandle = std::unique_ptr<cJSON, CJsonDeleter>;

struct CJsonBlocksDeleter {
  std::unique_ptr<BlockAllocator> blocks;
  void operator()(const cJSON* /*tree*/) { blocks.reset(); }
};

/// Owns a whole cJSON tree that was parsed, with the blocks that it lies in, all freed at once. Not
/// to be changed, and no part of it can be handed over to another tree. Any number of them, and of
/// handles, live side by side.
using CJsonDocument = std::unique_ptr<const cJSON, CJsonBlocksDeleter>;

/// Parses as cJSON_Parse does: up to the end of the first value, at most 1000 levels deep. Empty
/// when the text is not JSON; cJSON_GetErrorPtr() then points into `text`. Throws std::bad_alloc
/// when memory ran out, which cJSON itself does not tell apart. The document does not need the
/// text.
CJsonDocument parseCJson(const std::string& text);

/// The tree in cJSON's formatted layout. Throws std::bad_alloc.
std::string printCJson(const cJSON& tree);

/// New values; each throws std::bad_alloc instead of giving an empty handle.
CJsonHandle cjsonObject();
CJsonHandle cjsonArray();
CJsonHandle cjsonString(const std::string& text);
CJsonHandle cjsonNumber(double number);
CJsonHandle cjsonIntArray(const std::vector<std::int32_t>& numbers);

/// Hands the item over to the object or array, at its end, in constant time. A name already there
/// is not replaced. Throws std::bad_alloc.
void addMember(cJSON& object, const std::string& name, CJsonHandle item);
void addElement(cJSON& array, CJsonHandle item);

}  // namespace quenfold
