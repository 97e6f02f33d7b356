// How a file of separated values is written: which character stands between its cells.
#pragma once

#include <optional>
#include <string_view>

namespace qorhost {

/// What a file's first lines tell of its form.
struct CsvForm {
  char delimiter = ',';
  std::string_view text;     ///< the file without a line "sep=;"
  bool hasFormLine = false;  ///< that there was one
};

/// The form of a text whose first record holds headings. `delimiter` is what somebody has said it
/// is; without one that of a first line "sep=;" holds, as spreadsheets read it, and else that of
/// comma, semicolon and tab which stands most often in the headings, outside quotes.
[[nodiscard]] CsvForm FormOf(std::string_view text, std::optional<char> delimiter);

}  // namespace qorhost
