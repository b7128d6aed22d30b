#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quenfold::database {

/// The cells of a line, as they are shown.
using Row = std::vector<std::string>;

/// Without line ends.
using Lines = std::vector<std::string>;

/// Where the shorter cells of a column stand.
enum class Side { kLeft, kRight };

/// The rows as lines: each column as wide as its widest cell, two blanks between,
/// none at the end. `sides` tells every column of the longest row.
Lines alignedLines(const std::vector<Row>& rows, const std::vector<Side>& sides);

/// The words side by side, wrapped in front of one that would reach beyond the width.
Lines wrapped(const std::vector<std::string>& words, std::size_t width);

}  // namespace quenfold::database
