#include "matrices/legacy_texts.h"

#include <fmt/format.h>

#include "json/escape.h"
#include "json/plain_run.h"
#include "matrices/format.h"

namespace quenfold::unpacking {
namespace {

constexpr std::string_view kEntryEnd = "\"}";

/// Nothing before the first element of a list, a comma before every other.
class Separator {
 public:
  void append(OutputFile& out) {
    out.append(mark_);
    mark_ = ",";
  }

 private:
  std::string_view mark_;
};

void appendDecimal(OutputFile& out, std::size_t number) {
  const fmt::format_int digits(number);
  out.append({digits.data(), digits.size()});
}

void appendPlain(OutputFile& out, std::string_view text) { out.append(text); }

void appendEscaped(OutputFile& out, std::string_view text) {
  quenfold::appendEscaped(out, text, kRapidJsonDigits);
}

/// "<name>": and what is in front of it.
void appendKey(OutputFile& out, std::string_view mark, std::string_view name) {
  out.append(mark);
  out.append("\"");
  out.append(name);
  out.append("\":");
}

void appendQuoted(OutputFile& out, std::string_view text) {
  out.append("\"");
  appendEscaped(out, text);
  out.append("\"");
}

/// Whether no name of these ports needs an escape. What the formatter makes of a pattern is not
/// known before.
bool needsNoEscape(const ExpandedFamily& family) {
  return isPlainRun(family.device.label) && isPlainRun(family.ports.slot) &&
         isPlainRun(family.ports.type) && isPlainRun(family.ports.group->port) &&
         splitPattern(family.ports.group->port).kind != PortPattern::Kind::kFormat;
}

}  // namespace

LegacyTexts::EntryMarks LegacyTexts::entryMarks(const char* first, const char* second) {
  return {fmt::format(R"({{"{}":")", first), fmt::format(R"(","{}":")", second)};
}

LegacyTexts::LegacyTexts(const ExpandedTree& expanded)
    : expanded_(expanded),
      name_(expanded.longestName),
      keyAndValue_(entryMarks(kEntryKey, kEntryValue)),
      portAndLabel_(entryMarks(kPortName, kPortLabel)) {}

template <typename Visit>
void LegacyTexts::forEachPort(const ExpandedFamily& family, Visit visit) {
  const PortTypeGroup& group = *family.ports.group;
  std::size_t position = family.firstPort;
  name_.startFamily(family.device.label, family.ports);
  forEachNumber({group.first, group.last}, [&](std::int32_t port) {
    name_.startPort(port);
    forEachNumber(family.ports.channels, [&](std::int32_t channel) {
      const std::string_view name = name_.onChannel(channel);
      visit(UnpackedPort{name, name.substr(family.device.label.size()), family.device.serial,
                         expanded_.labelOf(position)});
      ++position;
    });
  });
}

void LegacyTexts::writePorts(OutputFile& out, const MatrixEntry& matrix) {
  Separator separator;
  for (const ExpandedFamily* const family : matrix.families) {
    const auto appendName = needsNoEscape(*family) ? appendPlain : appendEscaped;
    forEachPort(*family, [&](const UnpackedPort& port) {
      separator.append(out);
      out.append(portAndLabel_.first);
      appendName(out, port.name);
      out.append(portAndLabel_.second);
      (port.label.empty() ? appendName : appendEscaped)(out, port.shownName());
      out.append(kEntryEnd);
    });
  }
}

void LegacyTexts::writeMatrices(OutputFile& out) {
  appendKey(out, "{", kConfig);
  appendKey(out, "{", kVersion);
  appendDecimal(out, kMatricesVersion);
  appendKey(out, ",", kMatrices);
  out.append("[");
  Separator separator;
  std::size_t id = 0;
  for (const auto& [name, matrix] : expanded_.matrices) {
    separator.append(out);
    appendKey(out, "{", kMatrixId);
    appendDecimal(out, id++);
    appendKey(out, ",", kMatrixName);
    appendQuoted(out, name);
    appendKey(out, ",", kMatrixSerial);
    appendQuoted(out, matrix.serialnumber);
    appendKey(out, ",", kMatrixPorts);
    out.append("[");
    writePorts(out, matrix);
    out.append("]}");
  }
  out.append("]}}");
}

/// `only` restricts the list to ports of that direction.
template <typename AppendEntry>
void LegacyTexts::writeList(OutputFile& out, std::optional<Direction> only,
                            AppendEntry appendEntry) {
  out.append("[");
  Separator separator;
  for (const ExpandedFamily& family : expanded_.families) {
    if (!only || family.ports.group->direction == *only) {
      forEachPort(family, [&](const UnpackedPort& port) {
        separator.append(out);
        appendEntry(port);
        out.append(kEntryEnd);
      });
    }
  }
  out.append("]");
}

void LegacyTexts::writeAvailable(OutputFile& out, Direction direction) {
  writeList(out, direction, [&](const UnpackedPort& port) {
    out.append(keyAndValue_.first);
    out.append(port.shownName());
    out.append(keyAndValue_.second);
    out.append(port.name);
  });
}

void LegacyTexts::writeAvailableInputs(OutputFile& out) { writeAvailable(out, Direction::kSource); }

void LegacyTexts::writeAvailableOutputs(OutputFile& out) {
  writeAvailable(out, Direction::kDestination);
}

void LegacyTexts::writePortLabels(OutputFile& out) {
  writeList(out, std::nullopt, [&](const UnpackedPort& port) {
    out.append(keyAndValue_.first);
    out.append(port.name);
    out.append(keyAndValue_.second);
    out.append(port.serial);
    out.append(port.suffix);
  });
}

void LegacyTexts::writeUserPortLabels(OutputFile& out) {
  writeList(out, std::nullopt, [&](const UnpackedPort& port) {
    out.append(portAndLabel_.first);
    out.append(port.name);
    out.append(portAndLabel_.second);
    out.append(port.shownName());
  });
}

}  // namespace quenfold::unpacking
