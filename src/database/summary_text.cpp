#include "database/summary_text.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "database/columns.h"
#include "database/device_lines.h"
#include "database/shown_text.h"
#include "logicalio/port_key.h"

namespace quenfold::database {
namespace {

/// How a field is drawn and called.
struct FieldSign {
  PortField field;
  char letter;
  std::string_view name;
};

/// The highest first, as the bits of a number are written.
constexpr std::array<FieldSign, kPortFieldCount> kFieldSigns = {{{kDevice, 'D', "device"},
                                                                 {kSlot, 'S', "slot"},
                                                                 {kPortPrefix, 'P', "port name"},
                                                                 {kPortId, 'N', "port number"},
                                                                 {kType, 'T', "type"},
                                                                 {kCh, 'C', "channel"}}};
constexpr char kFreeBit = '.';

void appendSection(std::string& text, std::string_view title, const Lines& lines) {
  if (lines.empty()) {
    return;
  }
  text.append(text.empty() ? "" : "\n").append(title).append("\n");
  for (const std::string& line : lines) {
    text.append("    ").append(line).append("\n");
  }
}

std::string directionsText(const Summary& summary) {
  const std::size_t neither = summary.ports - summary.inputs - summary.outputs;
  return fmt::format("inputs {}, outputs {}", summary.inputs, summary.outputs) +
         (neither == 0 ? std::string() : fmt::format(", neither {}", neither));
}

Lines countLines(const Summary& summary) {
  std::vector<Row> rows = {{"ports", std::to_string(summary.ports), directionsText(summary)},
                           {"port labels", std::to_string(summary.portLabels)}};
  for (const TableSummary& table : summary.tables) {
    rows.push_back({fmt::format("records of {}", table.file), std::to_string(table.records)});
  }
  return alignedLines(rows, {Side::kLeft, Side::kRight, Side::kLeft});
}

/// The highest bit first.
std::string barOf(const PortDict& portDict) {
  std::string bar(kPackedBits, kFreeBit);
  for (const FieldSign& sign : kFieldSigns) {
    const std::uint32_t mask =
        fieldBits(portDict, sign.field) > 0 ? portDict.mask.at(sign.field) : 0;
    for (unsigned bit = 0; bit < kPackedBits; ++bit) {
      if ((mask >> bit & 1U) != 0) {
        bar[kPackedBits - 1 - bit] = sign.letter;
      }
    }
  }
  return bar;
}

/// The file of a table, the bits that it takes, the bar, and how wide each field is.
Row bitRow(const TableSummary& table) {
  const PortDict& portDict = *table.portDict;
  Row row = {std::string(table.file), fmt::format("{} of {}", packedBits(portDict), kPackedBits),
             barOf(portDict)};
  for (const FieldSign& sign : kFieldSigns) {
    row.push_back(fmt::format("{} {}", sign.letter, fieldBits(portDict, sign.field)));
  }
  return row;
}

std::string legend() {
  std::string text;
  for (const FieldSign& sign : kFieldSigns) {
    text += fmt::format("{} {}, ", sign.letter, sign.name);
  }
  return text + fmt::format("{} free", kFreeBit);
}

/// The bits of the tables side by side, what that means where they are too many, and the legend.
Lines bitLines(const std::vector<TableSummary>& tables) {
  std::vector<Row> rows;
  Lines lost;
  for (const TableSummary& table : tables) {
    rows.push_back(bitRow(table));
    if (packedBits(*table.portDict) > kPackedBits) {
      lost.push_back(
          fmt::format("{} has too many: bits above the {} are lost, and its ports come "
                      "back as others.",
                      table.file, kPackedBits));
    }
  }
  std::vector<Side> sides(3 + kFieldSigns.size(), Side::kLeft);
  sides[1] = Side::kRight;
  Lines lines = alignedLines(rows, sides);
  if (!lines.empty()) {
    lines.insert(lines.end(), lost.begin(), lost.end());
    lines.push_back(legend());
  }
  return lines;
}

Lines fileLines(const std::vector<FileSize>& files) {
  if (files.empty()) {
    return {};
  }
  std::vector<Row> rows;
  rows.reserve(files.size() + 1);
  for (const FileSize& file : files) {
    rows.push_back({shownText(file.name), std::to_string(file.bytes)});
  }
  rows.push_back({"together", std::to_string(allBytes(files))});
  return alignedLines(rows, {Side::kLeft, Side::kRight});
}

}  // namespace

std::string summaryText(const Summary& summary) {
  std::string text;
  appendSection(text, fmt::format("A {} database", formName(summary.form)), countLines(summary));
  appendSection(text, "Devices", deviceLines(summary.devices));
  appendSection(text, "Bits of a packed port", bitLines(summary.tables));
  appendSection(text, "Bytes", fileLines(summary.files));
  return text;
}

}  // namespace quenfold::database
