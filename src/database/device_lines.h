#pragma once

#include <vector>

#include "database/columns.h"
#include "database/summary.h"

namespace quenfold::database {

/// The devices for a person: of each a line with its label, its serial number and how many ports it
/// has, and behind it a line for each group of its slots: what the slot is called, the ports, their
/// direction and their types. Slots in a row whose names differ in nothing but the number at their
/// end are one where they have the same groups. The columns are as wide for all devices.
Lines deviceLines(const std::vector<DeviceSummary>& devices);

}  // namespace quenfold::database
