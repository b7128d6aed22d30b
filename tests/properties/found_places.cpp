#include "properties/found_places.h"

#include <algorithm>

namespace quenfold::properties {

template <typename Test>
bool FoundPlaces::find(database::Kind kind, std::string_view file, Test test) const {
  const database::Findings::Groups& groups = findings_.of(kind);
  const auto group = groups.find(file);
  return group != groups.end() &&
         std::any_of(group->second.places.begin(), group->second.places.end(), test);
}

bool FoundPlaces::has(database::Kind kind, std::string_view file, const std::string& place) const {
  return find(kind, file, [&](const std::string& found) { return found == place; });
}

bool FoundPlaces::begins(database::Kind kind, std::string_view file,
                         const std::string& start) const {
  return find(kind, file,
              [&](const std::string& found) { return found.compare(0, start.size(), start) == 0; });
}

bool FoundPlaces::beginsAndHas(database::Kind kind, std::string_view file, const std::string& start,
                               const std::string& text) const {
  return find(kind, file, [&](const std::string& found) {
    return found.compare(0, start.size(), start) == 0 &&
           found.find(text, start.size()) != std::string::npos;
  });
}

bool FoundPlaces::ends(database::Kind kind, std::string_view file, const std::string& end) const {
  return find(kind, file, [&](const std::string& found) {
    return found.size() >= end.size() &&
           found.compare(found.size() - end.size(), end.size(), end) == 0;
  });
}

bool FoundPlaces::any(database::Kind kind, std::string_view file) const {
  return find(kind, file, [](const std::string&) { return true; });
}

}  // namespace quenfold::properties
