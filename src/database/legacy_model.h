#pragma once

#include "database/legacy_database.h"
#include "database/model.h"

namespace quenfold::database {

/// The matrices and ports that the file lists, those that packing does not come to included. An
/// entry without a port string is left out. Strings are taken whole, zero bytes and all. They view
/// the text of the legacy matrices. A label that is empty or the port's own name is none.
void listPorts(const LegacyMatrices& legacy, Model& model);

/// The label that counts.
inline std::string_view ownLabel(std::string_view label, std::string_view portName) {
  return label == portName ? std::string_view() : label;
}

}  // namespace quenfold::database
