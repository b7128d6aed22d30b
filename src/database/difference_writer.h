#pragma once

#include <string>

#include "database/difference.h"
#include "json/writer.h"

namespace quenfold::database {

// Both tell of each kind in each file the first five places, with `all` every one. Neighbouring
// ports are one place, see `foldPorts`.

/// For a person: a line for each kind in each file with the number of differences, folded ports
/// counted one by one, and the places below it. Control characters are spelled. One line when
/// nothing differs.
std::string differencesText(const Differences& differences, bool all);

/// {"differences": [{"kind": "port-added", "file": "matrices.json", "place": "...", "from": null,
/// "to": null}, ...]} with a line end. Texts are as they are; an empty `from` or `to` is null.
JsonBuffer differencesJson(const Differences& differences, bool all);

}  // namespace quenfold::database
