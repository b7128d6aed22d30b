#pragma once

#include <string>

#include "database/difference.h"
#include "json/writer.h"

namespace quenfold::database {

// Neighbouring ports are one place, see `foldPorts`.

/// For a person: a line for each kind in each file with the number of differences, folded ports
/// counted one by one, and below it the first five places, with `all` every one. Control characters
/// are spelled. One line when nothing differs.
std::string differencesText(const Differences& differences, bool all);

/// {"differences": [{"kind": "port-added", "file": "matrices.json", "place": "...", "from": null,
/// "to": null}, ...]} with a line end, every place: nothing there would tell that one is left out.
/// Texts are as they are; an empty `from` or `to` is null.
JsonBuffer differencesJson(const Differences& differences);

}  // namespace quenfold::database
