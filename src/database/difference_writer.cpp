#include "database/difference_writer.h"

#include <fmt/format.h>

#include <string_view>

#include "database/port_folding.h"
#include "database/shown_text.h"

namespace quenfold::database {
namespace {

constexpr std::size_t kShownPlaces = 5;

/// The differences of one kind in one file.
struct Group {
  const DifferenceKindText& kind;
  const std::vector<Difference>& differences;  // of the kind
  std::size_t first;
  std::size_t end;
};

/// The differences of a file are side by side.
template <typename Visit>
void forEachGroup(const Differences& differences, Visit visit) {
  for (std::size_t kind = 0; kind < kDifferenceKinds.size(); ++kind) {
    const std::vector<Difference>& ofKind = differences.byKind.at(kind);
    for (std::size_t first = 0, end = 0; first < ofKind.size(); first = end) {
      while (end < ofKind.size() && ofKind[end].file == ofKind[first].file) {
        ++end;
      }
      visit(Group{kDifferenceKinds.at(kind), ofKind, first, end});
    }
  }
}

/// Calls visit(place, difference) for the places to be told, with the first difference of each.
/// Returns how many differences are left.
template <typename Visit>
std::size_t forEachPlace(const Group& group, bool all, Visit visit) {
  std::size_t next = group.first;
  for (std::size_t places = 0; next < group.end && (all || places < kShownPlaces); ++places) {
    const Difference& first = group.differences[next];
    if (group.kind.ofPorts) {
      const FoldedPlace folded = foldPorts(group.differences, next);
      visit(std::string_view(folded.place), first);
      next += folded.count;
    } else {
      visit(first.place, first);
      ++next;
    }
  }
  return group.end - next;
}

std::string valueText(std::string_view value) {
  return value.empty() ? std::string("nothing") : quotedText(value);
}

void appendPlace(std::string& text, std::string_view place, const Difference& difference) {
  text.append("    ").append(shownText(place));
  if (difference.from != difference.to) {
    text.append(": ").append(valueText(difference.from));
    text.append(" -> ").append(valueText(difference.to));
  }
  text += '\n';
}

void appendGroup(std::string& text, const Group& group, bool all) {
  text += fmt::format("{} ({}) in {}: {}\n", group.kind.name, group.end - group.first,
                      group.differences[group.first].file, group.kind.sentence);
  const std::size_t left =
      forEachPlace(group, all, [&text](const auto&... place) { appendPlace(text, place...); });
  if (left != 0) {
    text += fmt::format("    and {} more\n", left);
  }
}

void writeMember(PrettyJsonWriter& writer, const char* key, std::string_view text) {
  writer.Key(key);
  writeString(writer, text);
}

void writeValue(PrettyJsonWriter& writer, const char* key, std::string_view value) {
  if (value.empty()) {
    writer.Key(key);
    writer.Null();
  } else {
    writeMember(writer, key, value);
  }
}

void writeGroup(PrettyJsonWriter& writer, const Group& group) {
  forEachPlace(group, true, [&](std::string_view place, const Difference& difference) {
    writer.StartObject();
    writeMember(writer, "kind", group.kind.name);
    writeMember(writer, "file", difference.file);
    writeMember(writer, "place", place);
    writeValue(writer, "from", difference.from);
    writeValue(writer, "to", difference.to);
    writer.EndObject();
  });
}

}  // namespace

std::string differencesText(const Differences& differences, bool all) {
  std::string text;
  forEachGroup(differences, [&](const Group& group) { appendGroup(text, group, all); });
  return text.empty() ? "Nothing differs.\n" : text;
}

JsonBuffer differencesJson(const Differences& differences) {
  JsonBuffer buffer;
  PrettyJsonWriter writer(buffer);
  writer.StartObject();
  writer.Key("differences");
  writer.StartArray();
  forEachGroup(differences, [&](const Group& group) { writeGroup(writer, group); });
  writer.EndArray();
  writer.EndObject();
  buffer.Put('\n');
  return buffer;
}

}  // namespace quenfold::database
