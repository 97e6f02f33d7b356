// Words of the desks' lists in the language of the program.
#pragma once

#include <QString>
#include <string>

namespace qorhost {

/// A word of list_word_table.h: a title, the name of a field, the kind of a step, an operator of a
/// condition. As it is where it is none of these, as what a store's owner has named.
[[nodiscard]] QString ShownWord(const QString& word);
[[nodiscard]] QString ShownTitle(const std::string& title);

}  // namespace qorhost
