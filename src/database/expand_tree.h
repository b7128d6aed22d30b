#pragma once

#include <string>

#include "database/packed_database.h"
#include "matrices/expand.h"

namespace quenfold::database {

/// A pattern of the tree as its file spells it, without the place of the number: "in[]".
std::string patternText(const unpacking::PortTypeGroup& group);

/// The ports of a database as unpacking lists them, with these labels. Refers to the database and
/// the labels. Throws what `expandPortTree` throws, with the path of the tree's file and the first
/// port whose name is at fault in front.
unpacking::ExpandedTree expandTree(const PackedDatabase& database, const PortLabelMap& labels);

}  // namespace quenfold::database
