#pragma once

#include <string>
#include <vector>

namespace quenfold::bench {

/// What the pieces work on, all of one generated plant of 20,000 ports: made when it is asked for
/// the first time.
struct PieceInputs {
  std::string matrices;               // "matrices.json"
  std::string sources;                // "sources.json"
  std::vector<std::string> portKeys;  // in the file's order
  std::string packedMatrices;         // "dbpack_matrices.json"
  std::string folder;                 // of the packed matrices, with a "/" behind it
};

const PieceInputs& pieceInputs();

}  // namespace quenfold::bench
