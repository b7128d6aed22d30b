#include "database/port_folding.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <system_error>

#include "app/text.h"
#include "matrices/format.h"

namespace quenfold::database {
namespace {

constexpr std::string_view kDigits = "0123456789";

/// A port string around its numbers. One without a plain channel is all `front`; one without a
/// plain number in brackets before it has that in `front` too, up to the channel.
struct NumberedPort {
  std::string_view front;
  std::optional<std::uint32_t> number;
  std::string_view middle;
  std::optional<std::uint32_t> channel;
};

bool endsWith(std::string_view text, std::string_view ending) {
  return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

NumberedPort numbersOf(std::string_view name) {
  const std::size_t digits = name.find_last_not_of(kDigits) + 1;
  const std::string_view stem = name.substr(0, digits);
  const std::optional<std::uint32_t> channel = plainNumber(name.substr(digits));
  if (!channel || !endsWith(stem, kChannelPrefix)) {
    return {name, {}, {}, {}};
  }
  const std::size_t number = stem.rfind('[') + 1;  // 0 without a bracket
  const std::size_t close = std::min(stem.find(']', number), stem.size());
  const std::optional<std::uint32_t> port = plainNumber(stem.substr(number, close - number));
  if (number == 0 || !port) {
    return {stem, {}, {}, channel};
  }
  return {stem.substr(0, number), port, stem.substr(close), channel};
}

/// Whether two ports differ in nothing but their numbers; a port's is there where the middle is.
bool areAlike(const NumberedPort& a, const NumberedPort& b) {
  return a.front == b.front && a.middle == b.middle;
}

bool isNext(std::optional<std::uint32_t> number, std::uint64_t after) {
  return number && *number == after + 1;
}

/// Differences at neighbouring channels of one port.
struct Row {
  NumberedPort port;  // with the first channel
  std::uint32_t lastChannel = 0;
  std::size_t end = 0;  // behind the last of the differences
};

bool sameChange(const Difference& a, const Difference& b) {
  return a.from == b.from && a.to == b.to;
}

Row rowAt(const std::vector<Difference>& differences, std::size_t first) {
  Row row;
  row.port = numbersOf(differences[first].place);
  row.lastChannel = row.port.channel.value_or(0);
  row.end = first + 1;
  while (row.port.channel && row.end < differences.size() &&
         sameChange(differences[row.end], differences[first])) {
    const NumberedPort port = numbersOf(differences[row.end].place);
    if (!areAlike(port, row.port) || port.number != row.port.number ||
        !isNext(port.channel, row.lastChannel)) {
      break;
    }
    row.lastChannel = *port.channel;
    ++row.end;
  }
  return row;
}

std::string textOf(const Row& first, std::uint32_t lastNumber) {
  const NumberedPort& port = first.port;
  std::string text(port.front);
  if (port.number) {
    text += rangeText(*port.number, lastNumber);
  }
  text += port.middle;
  if (port.channel) {
    text += rangeText(*port.channel, first.lastChannel);
  }
  return text;
}

}  // namespace

std::optional<std::uint32_t> plainNumber(std::string_view text) {
  std::uint32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, status] = std::from_chars(text.data(), end, number);
  const bool plain = status == std::errc() && stop == end && (text.size() == 1 || text[0] != '0');
  return plain ? std::optional(number) : std::nullopt;
}

std::string rangeText(std::int64_t first, std::int64_t last) {
  return first == last ? fmt::format("{}", first) : fmt::format("{}..{}", first, last);
}

FoldedPlace foldPorts(const std::vector<Difference>& differences, std::size_t first) {
  const Row head = rowAt(differences, first);
  std::uint32_t lastNumber = head.port.number.value_or(0);
  std::size_t end = head.end;
  while (head.port.number && end < differences.size() &&
         sameChange(differences[end], differences[first])) {
    const Row row = rowAt(differences, end);
    if (!areAlike(row.port, head.port) || !isNext(row.port.number, lastNumber) ||
        row.port.channel != head.port.channel || row.lastChannel != head.lastChannel) {
      break;
    }
    lastNumber = *row.port.number;
    end = row.end;
  }
  return {textOf(head, lastNumber), end - first};
}

}  // namespace quenfold::database
