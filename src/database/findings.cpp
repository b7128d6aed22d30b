#include "database/findings.h"

#include <fmt/format.h>

#include <algorithm>

#include "app/error.h"
#include "database/shown_text.h"
#include "json/writer.h"

namespace quenfold::database {
namespace {

template <typename Visit>
void forEachGroup(const Findings& findings, Visit visit) {
  for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
    for (const auto& [file, group] : findings.of(static_cast<Kind>(kind))) {
      visit(static_cast<Kind>(kind), file, group);
    }
  }
}

void writeGroup(PrettyJsonWriter& writer, Kind kind, const std::string& file,
                const FindingGroup& group) {
  writer.StartObject();
  writer.Key("kind");
  writer.String(textOf(kind).name);
  writer.Key("note");
  writer.Bool(textOf(kind).note);
  writer.Key("file");
  writeString(writer, file);
  writer.Key("count");
  writer.Uint64(group.count);
  writer.Key("places");
  writer.StartArray();
  for (const std::string& place : group.places) {
    writeString(writer, place);
  }
  writer.EndArray();
  writer.EndObject();
}

}  // namespace

FindingGroup& Findings::groupOf(Kind kind, std::string_view file) {
  Groups& groups = groups_.at(static_cast<std::size_t>(kind));
  const auto found = groups.find(file);
  return found != groups.end() ? found->second : groups[std::string(file)];
}

Kind kindOf(std::string_view name) {
  const auto* const found = std::find_if(
      kKinds.begin(), kKinds.end(), [name](const KindText& kind) { return kind.name == name; });
  if (found == kKinds.end()) {
    throw runtimeError("unknown kind: {}", name);
  }
  return static_cast<Kind>(found - kKinds.begin());
}

bool anyCounts(const Findings& findings, bool notesCount) {
  bool any = false;
  forEachGroup(findings, [&](Kind kind, const std::string& /*file*/, const FindingGroup&) {
    any = any || notesCount || !textOf(kind).note;
  });
  return any;
}

std::vector<std::string_view> refusingKinds(const Findings& findings,
                                            const std::vector<Kind>& accepted) {
  std::vector<std::string_view> names;
  forEachGroup(findings, [&](Kind kind, const std::string& /*file*/, const FindingGroup&) {
    const std::string_view name = textOf(kind).name;
    if (!textOf(kind).note && std::find(accepted.begin(), accepted.end(), kind) == accepted.end() &&
        (names.empty() || names.back() != name)) {
      names.push_back(name);
    }
  });
  return names;
}

std::string findingsText(const Findings& findings) {
  std::string text;
  forEachGroup(findings, [&](Kind kind, const std::string& file, const FindingGroup& group) {
    const KindText& about = textOf(kind);
    text += fmt::format("{}{} ({}) in {}: {}\n", about.note ? "note: " : "", about.name,
                        group.count, file, about.sentence);
    for (const std::string& place : group.places) {
      text.append("    ").append(shownText(place)) += '\n';
    }
    if (group.places.size() < group.count) {
      text += fmt::format("    and {} more\n", group.count - group.places.size());
    }
  });
  return text.empty() ? "Nothing found.\n" : text;
}

std::string findingsJson(const Findings& findings, Form form) {
  JsonBuffer text;
  PrettyJsonWriter writer(text);
  writer.StartObject();
  writer.Key("database");
  writeString(writer, formName(form));
  writer.Key("findings");
  writer.StartArray();
  forEachGroup(findings, [&](Kind kind, const std::string& file, const FindingGroup& group) {
    writeGroup(writer, kind, file, group);
  });
  writer.EndArray();
  writer.EndObject();
  return std::string(textOf(text)) + "\n";
}

}  // namespace quenfold::database
