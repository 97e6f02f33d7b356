// The desks' lists in the language of the program: titles, and cells that are words of the desks.
#pragma once

#include <QString>
#include <string>

#include "frame/value.h"
#include "host/desks/list.h"

namespace qorhost {

/// A word of the desks' lists: a title, the name of a field, the kind of a step, an operator of a
/// condition. As it is where it is none that is known, as what a store's owner has named.
[[nodiscard]] QString ShownWord(const QString& word);
[[nodiscard]] QString ShownTitle(const std::string& title);

/// A cell as people read it. Cells that are yes or no, and those of fields that hold words of the
/// desks, are in the program's language; names and values stay as they are.
[[nodiscard]] QString ShownInList(const ListField& field, const qorcred::Value& cell);

/// What differs between a unit and the store, as a merge tells it: names of fields, or what would
/// be lost, with commas between them.
[[nodiscard]] QString ShownDifferences(const std::string& what);

/// The same list with the titles and cells as they are shown: for paper.
[[nodiscard]] Table ShownTable(const List& list);

}  // namespace qorhost
