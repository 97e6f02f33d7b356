// The desks' lists in the language of the program: cells that are words of the desks.
#pragma once

#include <QString>
#include <string>

#include "frame/value.h"
#include "host/desks/list.h"

namespace qorhost {

/// A cell as people read it. Cells that are yes or no, and those of fields that hold words of the
/// desks, are in the program's language; names and values stay as they are.
[[nodiscard]] QString ShownInList(const ListField& field, const qorcred::Value& cell);

/// What differs between a unit and the store, as a merge tells it: names of fields, or what would
/// be lost, with commas between them.
[[nodiscard]] QString ShownDifferences(const std::string& what);

/// The same list with the titles and cells as they are shown: for paper.
[[nodiscard]] Table ShownTable(const List& list);

}  // namespace qorhost
