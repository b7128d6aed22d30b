#pragma once

#include <cstdint>
#include <filesystem>

namespace quenfold::bench {

/// Writes "matrices.json" and "sources.json" of a plant of the usual shape, with the proportions
/// that the goals are stated for: about 110 bytes of matrices a port, a user's label on 31 ports of
/// 100, a source of 17 ports to 65 ports of the plant. Packing and unpacking gives the same
/// "matrices.json" again.
void writeUsual(std::uint32_t ports, const std::filesystem::path& folder);

}  // namespace quenfold::bench
