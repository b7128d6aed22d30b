#include "database/legacy_model.h"

#include <cstdint>
#include <string_view>

#include "json/access.h"
#include "matrices/format.h"

namespace quenfold::database {
namespace {

/// The whole string; empty for a member that is missing or none.
std::string_view wholeText(const JsonValue& object, const char* name) {
  const JsonValue* const member = findMember(object, name);
  return member == nullptr || !member->IsString()
             ? std::string_view()
             : std::string_view(member->GetString(), member->GetStringLength());
}

void listPortsOf(const JsonValue& matrix, Model& model) {
  const JsonValue* const ports = findMember(matrix, kMatrixPorts);
  if (ports == nullptr || !ports->IsArray()) {
    return;
  }
  const auto place = static_cast<std::uint32_t>(model.matrices.size() - 1);
  for (const JsonValue& entry : ports->GetArray()) {
    const std::string_view name = wholeText(entry, kPortName);
    if (name.data() != nullptr) {
      model.ports.push_back({name, ownLabel(wholeText(entry, kPortLabel), name), place});
    }
  }
}

}  // namespace

void listPorts(const LegacyMatrices& legacy, Model& model) {
  for (const JsonValue& matrix : legacy.matrices->GetArray()) {
    if (matrix.IsObject()) {
      model.matrices.push_back({wholeText(matrix, kMatrixName), wholeText(matrix, kMatrixSerial)});
      listPortsOf(matrix, model);
    }
  }
}

}  // namespace quenfold::database
