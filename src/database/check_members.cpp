#include "database/check_members.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "json/access.h"
#include "matrices/format.h"

namespace quenfold::database {
namespace {

using Names = std::initializer_list<std::string_view>;

class MemberCheck {
 public:
  explicit MemberCheck(Findings& findings) : findings_(findings) {}

  /// `path()` gives the object's path with a point behind it.
  template <typename MakePath>
  void check(const JsonValue& object, Names held, MakePath path) {
    std::vector<bool> seen(held.size());
    for (const auto& member : object.GetObject()) {
      const std::string_view name = jsonText(member.name);
      const auto* const found = std::find(held.begin(), held.end(), name);
      if (found == held.end()) {
        add(Kind::kMemberIgnored, path() + std::string(name));
        continue;
      }
      const auto place = static_cast<std::size_t>(found - held.begin());
      if (seen[place]) {
        add(Kind::kFieldLost, path() + std::string(name));
      }
      seen[place] = true;
    }
  }

  void add(Kind kind, const std::string& place) {
    findings_.add(kind, kMatricesFile, [&] { return place; });
  }

 private:
  Findings& findings_;
};

/// Nearly every port has these two and no others, and costs no more than to see it.
bool hasOnlyItsMembers(const JsonValue& port) {
  return port.MemberCount() == 2 && findMember(port, kPortName) != nullptr &&
         findMember(port, kPortLabel) != nullptr;
}

void checkPorts(MemberCheck& check, const JsonValue& matrix, std::size_t matrixPosition) {
  const JsonValue* const ports = findMember(matrix, kMatrixPorts);
  if (ports == nullptr || !ports->IsArray()) {
    return;
  }
  std::size_t position = 0;
  for (const JsonValue& port : ports->GetArray()) {
    ++position;
    if (port.IsObject() && !hasOnlyItsMembers(port)) {
      check.check(port, {kPortName, kPortLabel}, [&] {
        return fmt::format("{}.{}[{}].{}[{}].", kConfig, kMatrices, matrixPosition, kMatrixPorts,
                           position);
      });
    }
  }
}

void checkMatrix(MemberCheck& check, const JsonValue& matrix, std::size_t position) {
  if (matrix.IsObject()) {
    check.check(matrix, {kMatrixName, kMatrixSerial, kMatrixId, kMatrixType, kMatrixPorts},
                [&] { return fmt::format("{}.{}[{}].", kConfig, kMatrices, position); });
    checkPorts(check, matrix, position);
  }
}

void checkVersion(MemberCheck& check, const JsonValue& config) {
  const JsonValue* const version = findMember(config, kVersion);
  if (version != nullptr && !(version->IsInt() && version->GetInt() == kMatricesVersion)) {
    check.add(Kind::kMemberIgnored, fmt::format("{}.{}", kConfig, kVersion));
  }
}

}  // namespace

void checkMembers(const LegacyMatrices& legacy, Findings& findings) {
  MemberCheck check(findings);
  check.check(legacy.root, {kConfig}, [] { return std::string(); });
  const JsonValue& config = *findMember(legacy.root, kConfig);
  check.check(config, {kVersion, kMatrices}, [] { return fmt::format("{}.", kConfig); });
  checkVersion(check, config);
  std::size_t position = 0;
  for (const JsonValue& matrix : legacy.matrices->GetArray()) {
    checkMatrix(check, matrix, ++position);
  }
}

}  // namespace quenfold::database
