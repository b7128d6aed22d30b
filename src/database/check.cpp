#include "database/check.h"

#include <utility>

#include "database/check_matrices.h"
#include "database/check_members.h"
#include "database/check_packed.h"
#include "database/check_tables.h"
#include "database/legacy_model.h"

namespace quenfold::database {

Findings checkLegacy(const LegacyDatabase& legacy, const PackedSet& set, bool allPlaces) {
  Findings findings(allPlaces);
  for (const ReadingStop& stop : set.stops) {
    findings.add(Kind::kReadingStops, stop.file, [&] { return stop.place + ": " + stop.message; });
  }
  const PackedDatabase packed = loadPackedDatabase(set.texts, {});
  Model model;
  listPorts(legacy.matrices, model);
  KnownPorts ports;
  checkMatrices({legacy.matrices, model, packed}, ports, findings);
  checkMembers(legacy.matrices, findings);
  checkSerials(set.devices, findings);
  for (const Table table : kTables) {
    if (packed.tables.at(table)) {
      checkTable(table, *legacy.tables.at(table), {packed, model, set.portKeys, ports}, findings);
    }
  }
  return findings;
}

Findings checkPacked(const FileTexts& texts, const PackedDatabase& database, bool allPlaces) {
  Findings findings(allPlaces);
  checkFiles(texts, findings);
  checkTree(database, findings);
  for (const std::optional<PackedTable>& table : database.tables) {
    if (table) {
      checkPackedTable(*table, database.devices, findings);
    }
  }
  return findings;
}

}  // namespace quenfold::database
