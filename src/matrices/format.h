#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

// Every name and constant of the matrices' files, legacy and packed, each spelled once. Those of
// the label files are in json/format.h.

namespace quenfold {

// The legacy files.
inline constexpr std::string_view kMatricesFile = "matrices.json";
inline constexpr std::string_view kAvailableInputsFile = "availableInputs.json";
inline constexpr std::string_view kAvailableOutputsFile = "availableOutputs.json";
inline constexpr std::string_view kPortLabelsFile = "portLabels.json";
inline constexpr std::string_view kUserPortLabelsFile = "userPortLabels.json";

// The frame of "matrices.json".
inline constexpr const char* kConfig = "Config";
inline constexpr const char* kVersion = "version";
inline constexpr int kMatricesVersion = 8;
inline constexpr const char* kMatrices = "Matrices";

// A matrix; the packed details have some of its members.
inline constexpr const char* kMatrixName = "name";
inline constexpr const char* kMatrixSerial = "serialnumber";
inline constexpr const char* kMatrixId = "id";
inline constexpr const char* kMatrixType = "type";
inline constexpr const char* kMatrixPorts = "ports";

// A port of a matrix; the user's port labels have the same members.
inline constexpr const char* kPortName = "port";
inline constexpr const char* kPortLabel = "label";

// What a port string's number of a channel follows.
inline constexpr std::string_view kChannelPrefix = "ch";

// An entry of the lists of available ports and of the port labels.
inline constexpr const char* kEntryKey = "k";
inline constexpr const char* kEntryValue = "v";

// The packed sections beside the label files.
inline constexpr const char* kMatricesSection = "matrices";
inline constexpr const char* kInternalDetailsSection = "matricesInternalDetails";

// A group of ports in the packed tree.
inline constexpr const char* kGroupPort = "port";
inline constexpr const char* kGroupTypes = "types";

/// What a port is to its matrix.
enum class Direction : std::int32_t { kSource = 0, kDestination = 1, kUnknown = 2 };

/// How the packed tree spells the directions, by direction.
inline constexpr std::array<std::string_view, 3> kDirectionTexts = {"s", "d", "?"};

inline std::string_view directionText(Direction direction) {
  return kDirectionTexts.at(static_cast<std::size_t>(direction));
}

}  // namespace quenfold
