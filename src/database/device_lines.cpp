#include "database/device_lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "database/port_folding.h"
#include "database/shown_text.h"

namespace quenfold::database {
namespace {

using unpacking::PortTypeGroup;
using unpacking::SlotMap;
using Groups = std::vector<PortTypeGroup>;
using Types = decltype(PortTypeGroup::types);

constexpr std::size_t kTypesWidth = 48;

/// Slots as one line: the numbers at the end of their names follow each other, if there are any.
struct SlotRun {
  std::string_view stem;
  std::optional<std::uint32_t> first;
  std::uint32_t last = 0;
  const Groups* groups = nullptr;
};

SlotRun runOf(std::string_view name, const Groups& groups) {
  const std::size_t digits = name.find_last_not_of("0123456789") + 1;
  const std::optional<std::uint32_t> number = plainNumber(name.substr(digits));
  return {number ? name.substr(0, digits) : name, number, number.value_or(0), &groups};
}

bool sameTypes(const Types& a, const Types& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
    return std::tie(x.first, x.second.first, x.second.last) ==
           std::tie(y.first, y.second.first, y.second.last);
  });
}

bool sameGroup(const PortTypeGroup& a, const PortTypeGroup& b) {
  return std::tie(a.port, a.first, a.last, a.direction) ==
             std::tie(b.port, b.first, b.last, b.direction) &&
         sameTypes(a.types, b.types);
}

bool continues(const SlotRun& run, const SlotRun& next) {
  return run.first && next.first && run.stem == next.stem &&
         *next.first == std::uint64_t{run.last} + 1 &&
         std::equal(run.groups->begin(), run.groups->end(), next.groups->begin(),
                    next.groups->end(), sameGroup);
}

/// By their numbers: the tree has slot10 before slot2.
std::vector<SlotRun> slotRuns(const SlotMap& slots) {
  std::vector<SlotRun> all;
  all.reserve(slots.size());
  for (const auto& [name, groups] : slots) {
    all.push_back(runOf(name, groups));
  }
  std::sort(all.begin(), all.end(), [](const SlotRun& a, const SlotRun& b) {
    return std::tie(a.stem, a.first) < std::tie(b.stem, b.first);
  });
  std::vector<SlotRun> runs;
  for (const SlotRun& slot : all) {
    if (!runs.empty() && continues(runs.back(), slot)) {
      runs.back().last = slot.last;
    } else {
      runs.push_back(slot);
    }
  }
  return runs;
}

std::string slotText(const SlotRun& run) {
  return shownText(run.stem) + (run.first ? rangeText(*run.first, run.last) : std::string());
}

/// A pattern without a place for the number has it behind, unless it is one port.
std::string portsText(const PortTypeGroup& group) {
  const PatternParts pattern = partsOf(group.port);
  const std::string range = rangeText(group.first, group.last);
  if (pattern.numbered) {
    return shownText(pattern.front) + range + shownText(pattern.back);
  }
  return shownText(pattern.front) + (group.first == group.last ? std::string() : " " + range);
}

Lines typeLines(const Types& types) {
  std::vector<std::string> words;
  for (const auto& [type, channels] : types) {
    words.push_back(
        fmt::format("{} ch{},", shownText(type), rangeText(channels.first, channels.last)));
  }
  if (words.empty()) {
    return {"no type"};
  }
  words.back().pop_back();
  return wrapped(words, kTypesWidth);
}

void addGroup(std::vector<Row>& rows, const std::string& slot, const PortTypeGroup& group) {
  const Lines types = typeLines(group.types);
  rows.push_back({slot, portsText(group), std::string(directionName(group.direction)), types[0]});
  for (std::size_t line = 1; line < types.size(); ++line) {
    rows.push_back({"", "", "", types[line]});
  }
}

void addSlots(std::vector<Row>& rows, const SlotMap& slots) {
  for (const SlotRun& run : slotRuns(slots)) {
    std::string slot = slotText(run);
    if (run.groups->empty()) {
      rows.push_back({slot, "no ports", "", ""});
    }
    for (const PortTypeGroup& group : *run.groups) {
      addGroup(rows, slot, group);
      slot.clear();
    }
  }
}

Row deviceRow(const DeviceSummary& device) {
  std::string ports = fmt::format("{} {}", device.ports, device.ports == 1 ? "port" : "ports");
  if (device.record == nullptr) {
    return {shownText(device.id), "no device record", std::move(ports)};
  }
  return {shownText(device.record->label), shownText(device.record->serial), std::move(ports)};
}

}  // namespace

Lines deviceLines(const std::vector<DeviceSummary>& devices) {
  std::vector<Row> deviceRows;
  std::vector<Row> slotRows;
  std::vector<std::size_t> ends;  // of each device's slot rows
  for (const DeviceSummary& device : devices) {
    deviceRows.push_back(deviceRow(device));
    if (device.slots != nullptr) {
      addSlots(slotRows, *device.slots);
    }
    ends.push_back(slotRows.size());
  }
  const Lines heads = alignedLines(deviceRows, {Side::kLeft, Side::kLeft, Side::kRight});
  const Lines slots = alignedLines(slotRows, {Side::kLeft, Side::kLeft, Side::kLeft, Side::kLeft});
  Lines lines;
  std::size_t slot = 0;
  for (std::size_t device = 0; device < devices.size(); ++device) {
    lines.push_back(heads[device]);
    for (; slot < ends[device]; ++slot) {
      lines.push_back("    " + slots[slot]);
    }
  }
  return lines;
}

}  // namespace quenfold::database
