#include "database/commands.h"
#include "database/difference.h"
#include "database/difference_writer.h"
#include "database/held_database.h"
#include "database/load_model.h"
#include "database/size_table.h"
#include "database/summary.h"
#include "database/summary_json.h"
#include "database/summary_text.h"

namespace quenfold::database {
namespace {

PackedDatabase packedFormIn(const Folder& folder) {
  return folder.form == Form::kPacked
             ? loadPackedDatabase(readPackedFiles(folder.path), folder.path)
             : packedFormOf(readLegacyDatabase(folder.path));
}

/// Two legacy databases are compared as they are, before packing loses anything.
Model modelIn(const Folder& folder, bool asIs) {
  return asIs ? modelOf(readLegacyDatabase(folder.path)) : modelOf(packedFormIn(folder));
}

}  // namespace

Report diff(const DiffRequest& request) {
  const HeldDatabase from(request.from);
  const HeldDatabase to(request.to);
  const bool bothLegacy = from.folder().form == Form::kLegacy && to.folder().form == Form::kLegacy;
  const Model before = modelIn(from.folder(), bothLegacy);
  const Model after = modelIn(to.folder(), bothLegacy);
  const Differences differences = compare(before, after);
  return {request.json ? std::string(textOf(differencesJson(differences)))
                       : differencesText(differences, request.allPlaces),
          !isEmpty(differences)};
}

Report show(const ShowRequest& request) {
  const HeldDatabase held(request.folder);
  const Folder& folder = held.folder();
  const PackedDatabase database = packedFormIn(folder);
  Summary summary = summarise(database);
  summary.form = folder.form;
  summary.files = sizesIn(folder.path, filesIn(folder));
  return {request.json ? std::string(textOf(summaryJson(summary))) : summaryText(summary), false};
}

}  // namespace quenfold::database
