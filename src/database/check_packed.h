#pragma once

#include "database/findings.h"
#include "database/packed_database.h"

namespace quenfold::database {

/// Adds the files of a set that are not there.
void checkFiles(const FileTexts& texts, Findings& findings);

/// Adds what does not fit together of the port tree and the label files. Throws what expanding the
/// tree throws.
void checkTree(const PackedDatabase& database, Findings& findings);

/// Adds what does not fit together of a table, its side files and the device labels.
void checkPackedTable(const PackedTable& table, const std::vector<DeviceLabel>& devices,
                      Findings& findings);

}  // namespace quenfold::database
