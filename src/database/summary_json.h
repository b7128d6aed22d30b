#pragma once

#include "database/summary.h"
#include "json/writer.h"

namespace quenfold::database {

/// The summary for a program, with a line end:
///
///   {"database": "packed", "ports": 428, "inputs": 232, "outputs": 196, "portLabels": 311,
///    "devices": [<device>, ...], "tables": [<table>, ...], "files": [<file>, ...], "bytes": 9000}
///   the database may be "legacy"
///   a device   {"id": "<its key in the packed files>", "label": "...", "serial": "...",
///               "ports": 12, "slots": [<slot>, ...]}
///              label and serial are null where it has no record
///   a slot     {"slot": "...", "groups": [<group>, ...]}
///   a group    {"port": "in[]", "first": 1, "last": 8, "direction": "source", "types": [<type>,
///   ...]}
///              the direction may be "destination" and "neither" as well
///   a type     {"type": "...", "first": 1, "last": 2}, the channels
///   a table    {"file": "sources.json", "records": 36, "bits": 20, "fields": {"device": 3,
///               "slot": 3, "port_prefix": 4, "port_id": 5, "type": 2, "ch": 3}}
///              a packed port has 32 bits: with more of them ports are lost
///   a file     {"file": "...", "bytes": 1234}
JsonBuffer summaryJson(const Summary& summary);

}  // namespace quenfold::database
