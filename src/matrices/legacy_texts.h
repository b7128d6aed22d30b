#pragma once

#include <map>
#include <string>
#include <vector>

#include "json/document.h"
#include "matrices/expand.h"

/// The texts of the legacy files.
namespace quenfold::unpacking {

/// "matrices.json", without white space.
JsonBuffer matricesText(const std::map<std::string, MatrixEntry>& matrices);

/// The other four are put together by hand. Kept on purpose: their strings are copied as they are,
/// no character is escaped.

/// "availableInputs.json" of the inputs, "availableOutputs.json" of the outputs: shown name to
/// port string.
JsonBuffer availableText(const PortReferences& ports);

/// "portLabels.json": port string to the same with the serial as its device.
JsonBuffer portLabelsText(const std::vector<UnpackedPort>& ports);

/// "userPortLabels.json": port string and shown name.
JsonBuffer userPortLabelsText(const std::vector<UnpackedPort>& ports);

}  // namespace quenfold::unpacking
