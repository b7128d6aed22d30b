#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "database/folder.h"

namespace quenfold::database {

/// What may be found in a database. An enumerator is the kind's place in `kKinds`.
enum class Kind : std::size_t {
  kReadingStops,
  kPortAdded,
  kPortLost,
  kPortRepeated,
  kLabelLost,
  kMatrixChanged,
  kSerialShared,
  kListUnreadable,
  kPortUnknown,
  kPortAmbiguous,
  kPortChanged,
  kIdRepeated,
  kCategoryLost,
  kFieldLost,
  kFileMissing,
  kFingerprintDiffers,
  kNameMissing,
  kNameUnused,
  kCategoryUnused,
  kPortUndefined,
  kDeviceUnknown,
  kLabelUnused,
  kRangeEmpty,
  kDetailsLost,
  kOrderChanged,
  kMemberIgnored,
  kKeyChanged,
  kLevelKeysLost,
  kEmptyPortsLost,
  kPortDangling,
};

struct KindText {
  const char* name;
  bool note;             // told, but no reason to stop
  const char* sentence;  // for a person
};

/// By kind, the losses first.
inline constexpr std::array<KindText, 30> kKinds = {{
    {"reading-stops", false, "an entry ends the reading, and nothing after it is packed"},
    {"port-added", false, "a port comes back that the file does not list"},
    {"port-lost", false, "a port of the file does not come back"},
    {"port-repeated", false, "a port is listed more than once and comes back once"},
    {"label-lost", false, "a port comes back without its label or with another"},
    {"matrix-changed", false,
     "ports come back in a matrix of another name or serial number, or a matrix does not come "
     "back"},
    {"serial-shared", false, "devices share a serial number, by which packing tells them apart"},
    {"list-unreadable", false,
     "this name holds a character that makes the unpacked lists of ports no JSON"},
    {"port-unknown", false, "this is neither a port's label nor a port key and comes back empty"},
    {"port-ambiguous", false, "this is the name of several ports"},
    {"port-changed", false, "another port comes back"},
    {"id-repeated", false,
     "records share an id: the name and the categories of the last go to all"},
    {"category-lost", false, "the categories do not come back as they are"},
    {"field-lost", false, "the value of a member does not come back"},
    {"file-missing", false, "a file of the set is not there"},
    {"fingerprint-differs", false,
     "a stored fingerprint is not that of the files: they were not packed together, or were "
     "edited"},
    {"name-missing", false, "a record has no name"},
    {"name-unused", false, "a name is that of no record"},
    {"category-unused", false, "categories are those of no record"},
    {"port-undefined", false, "a packed port has a number that its dictionaries do not hold"},
    {"device-unknown", false, "a device is not among those of dbpack_deviceLabels.json"},
    {"label-unused", false, "a label is that of no port"},
    {"range-empty", false, "a range ends before it begins and holds no port"},
    {"details-lost", true, "a matrix comes back with another id or type"},
    {"order-changed", true, "what comes back has another order"},
    {"member-ignored", true, "the packed format does not hold this"},
    {"key-changed", true, "the key of a record comes back as 0"},
    {"level-keys-lost", true, "level keys do not come back"},
    {"empty-ports-lost", true, "another number of empty ports comes back at the end"},
    {"port-dangling", true, "a record has a port that no matrix lists"},
}};

inline const KindText& textOf(Kind kind) { return kKinds.at(static_cast<std::size_t>(kind)); }

/// All of one kind in one file.
struct FindingGroup {
  std::size_t count = 0;
  std::vector<std::string> places;  // all of them, or the first
};

/// What was found, in the order of the kinds, then of the names of the files.
class Findings {
 public:
  /// How many places are kept of each group when not all are wanted.
  static constexpr std::size_t kShownPlaces = 5;

  explicit Findings(bool allPlaces) : allPlaces_(allPlaces) {}

  /// One more, with the place that `place()` gives: it is called for the places that are kept.
  template <typename MakePlace>
  void add(Kind kind, std::string_view file, MakePlace place) {
    FindingGroup& group = groupOf(kind, file);
    ++group.count;
    if (allPlaces_ || group.places.size() < kShownPlaces) {
      group.places.push_back(place());
    }
  }

  using Groups = std::map<std::string, FindingGroup, std::less<>>;  // by file
  [[nodiscard]] const Groups& of(Kind kind) const {
    return groups_.at(static_cast<std::size_t>(kind));
  }

 private:
  FindingGroup& groupOf(Kind kind, std::string_view file);

  bool allPlaces_;
  std::array<Groups, kKinds.size()> groups_;
};

/// The kind of that name. Throws "unknown kind: <name>".
Kind kindOf(std::string_view name);

/// Whether there is a finding that is no note, or any at all when notes count.
bool anyCounts(const Findings& findings, bool notesCount);

/// The names of the kinds of what was found, in their order, that are no notes and not accepted.
std::vector<std::string_view> refusingKinds(const Findings& findings,
                                            const std::vector<Kind>& accepted);

/// For a person: a line for each group, its places below it, or a line that says that there is
/// none. Ends in a line end.
std::string findingsText(const Findings& findings);

/// {"database": "legacy", "findings": [{"kind", "note", "file", "count", "places"}, ...]}
std::string findingsJson(const Findings& findings, Form form);

}  // namespace quenfold::database
