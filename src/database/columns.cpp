#include "database/columns.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "database/shown_text.h"

namespace quenfold::database {
namespace {

constexpr std::string_view kGap = "  ";

std::vector<std::size_t> widthsOf(const std::vector<Row>& rows, std::size_t columns) {
  std::vector<std::size_t> widths(columns);
  for (const Row& row : rows) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], shownWidth(row[column]));
    }
  }
  return widths;
}

}  // namespace

Lines alignedLines(const std::vector<Row>& rows, const std::vector<Side>& sides) {
  const std::vector<std::size_t> widths = widthsOf(rows, sides.size());
  Lines lines;
  lines.reserve(rows.size());
  for (const Row& row : rows) {
    std::string& line = lines.emplace_back();
    for (std::size_t column = 0; column < row.size(); ++column) {
      const std::string blanks(widths[column] - shownWidth(row[column]), ' ');
      line.append(column == 0 ? std::string_view() : kGap);
      line.append(sides[column] == Side::kRight ? blanks + row[column] : row[column] + blanks);
    }
    line.erase(line.find_last_not_of(' ') + 1);
  }
  return lines;
}

Lines wrapped(const std::vector<std::string>& words, std::size_t width) {
  Lines lines;
  for (const std::string& word : words) {
    if (lines.empty() || shownWidth(lines.back()) + 1 + shownWidth(word) > width) {
      lines.push_back(word);
    } else {
      lines.back().append(" ").append(word);
    }
  }
  return lines;
}

}  // namespace quenfold::database
