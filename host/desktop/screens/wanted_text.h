// A text that somebody types to find rows.
#pragma once

#include <QString>
#include <QStringList>
#include <string>

#include "host/desks/name_words.h"

namespace qorhost {

/// Found where a row has it, in any letter case; and, as the search over all units finds names, by
/// words that begin words of the row, in whatever order, without accents and apostrophes: "sinead
/// obrien" in "O'Brien Sinéad".
class WantedText {
 public:
  WantedText() = default;
  explicit WantedText(const QString& text);

  /// An empty one is everywhere.
  [[nodiscard]] bool empty() const { return text_.isEmpty(); }
  /// Looks at the texts of one row, cell by cell.
  [[nodiscard]] bool IsIn(const QString& cell) const;
  [[nodiscard]] bool IsIn(const QStringList& cells) const;
  /// Whether a row is shown that is narrowed to it; `cells` gives the row's texts, and is not asked
  /// for an empty text.
  template <typename Cells>
  [[nodiscard]] bool Shows(const Cells& cells) const {
    return empty() || IsIn(cells());
  }

 private:
  [[nodiscard]] bool HasWords(const std::string& row) const;

  QString text_;
  std::string plain_;
  WantedWords words_{Words()};
};

}  // namespace qorhost
