#pragma once

#include <string_view>

namespace quenfold {

/// The legacy files by name, and the member names of "matrices.json", shared by its reader and its
/// writer.
inline constexpr std::string_view kMatricesFile = "matrices.json";
inline constexpr std::string_view kAvailableInputsFile = "availableInputs.json";
inline constexpr std::string_view kAvailableOutputsFile = "availableOutputs.json";
inline constexpr std::string_view kPortLabelsFile = "portLabels.json";
inline constexpr std::string_view kUserPortLabelsFile = "userPortLabels.json";

inline constexpr const char* kConfig = "Config";
inline constexpr const char* kMatrices = "Matrices";
inline constexpr const char* kMatrixName = "name";
inline constexpr const char* kMatrixSerial = "serialnumber";
inline constexpr const char* kMatrixId = "id";
inline constexpr const char* kMatrixType = "type";
inline constexpr const char* kMatrixPorts = "ports";
inline constexpr const char* kPortName = "port";
inline constexpr const char* kPortLabel = "label";

}  // namespace quenfold
