// The words in the cells of an import.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "host/desks/input_fault.h"
#include "host/files/import_file.h"

namespace qorhost {

/// What one line came to besides its rows: what was left out of it, for people.
using ImportNotes = std::vector<std::string>;

/// What becomes of an apostrophe where a controller would take it for the end of the text in its
/// statement.
enum class Apostrophes : bool { kRefused, kReplaced };

/// The column that holds an input of a desk.
struct ColumnField {
  std::string_view field;
  std::size_t column = 0;
};

/// The column whose cell is typed into a control of a screen.
struct ControlColumn {
  std::string_view control;
  std::size_t column = 0;
};

/// The column of a control, or `otherwise` where no cell is typed into it.
[[nodiscard]] std::size_t ColumnOf(std::string_view control, std::span<const ControlColumn> columns,
                                   std::size_t otherwise);

/// The inputs in the words of a file: its own headings. The file must live as long.
[[nodiscard]] std::vector<FieldWord> WordsOf(const ImportFile& file,
                                             std::span<const ColumnField> fields);

/// What is wrong about a number that a spreadsheet has written with separators between thousands,
/// as in "20,001": raises InputFault with the number as it has to stand. Any other text passes.
void RequireNoSeparators(std::string_view field, std::string_view cell);

/// Two words of which a cell holds one.
struct EitherWords {
  std::string_view yes;
  std::string_view no;
};
inline constexpr EitherWords kTrueFalse{"True", "False"};
inline constexpr EitherWords kActiveInactive{"Active", "Inactive"};

/// Whether the cell of a column says yes, in one of the two words, or as True, Yes or 1 and False,
/// No or 0, in any letter case; nothing for an empty one. Raises InputFault for anything else.
[[nodiscard]] std::optional<bool> ReadEither(std::string_view heading, std::string_view cell,
                                             const EitherWords& words);

}  // namespace qorhost
