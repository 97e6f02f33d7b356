// A CSV file with headings, whose lines are to be entered one by one.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/csv_reader.h"
#include "host/files/table.h"

namespace qorhost {

/// A column that an import knows; its place in the list of columns is how it is asked for.
struct ImportColumn {
  std::string_view heading;
  bool needed = false;
  std::string_view help;  ///< what its cells hold
};

/// One line of the file behind the headings.
class ImportLine {
 public:
  /// The line of the file in which it begins, from 1.
  [[nodiscard]] std::size_t number() const { return record_.line; }
  /// Why its cells cannot be used; "" when they can.
  [[nodiscard]] const std::string& fault() const { return record_.fault; }
  /// The cell of a column as it is to be typed; nothing when the file has no such column.
  [[nodiscard]] std::optional<std::string_view> Cell(std::size_t column) const;
  /// The same without blanks around; "" when the file has no such column.
  [[nodiscard]] std::string_view Trimmed(std::size_t column) const;

 private:
  friend class ImportFile;
  CsvRecord record_;
  std::vector<std::optional<std::size_t>> placeOf_;  // of each column in the record
};

/// A whole file in memory. Headings may stand in any order and letter case. What is wrong with the
/// headings, or a quote that is never closed, is told at once: where cells end is unknown then.
class ImportFile {
 public:
  /// Takes the text of a file. Raises FileError: kHeadings for headings that are unknown, missing
  /// or there twice, kUnusable for the quote.
  ImportFile(std::string text, std::span<const ImportColumn> columns);
  ImportFile(const ImportFile&) = delete;
  ImportFile& operator=(const ImportFile&) = delete;

  /// How many lines there are behind the headings.
  [[nodiscard]] std::size_t lineCount() const { return lineCount_; }
  /// Whether the last line has its end: one without may be cut off within its last cell.
  [[nodiscard]] bool endsWithALine() const { return text_.ends_with('\n'); }
  /// False at the end.
  bool Next(ImportLine& line);

 private:
  void ReadHeadings();
  [[nodiscard]] std::size_t FindColumn(std::string_view heading, std::size_t line) const;
  void CheckQuotes();
  [[nodiscard]] std::string KnownHeadings() const;

  std::string text_;
  std::span<const ImportColumn> columns_;
  CsvReader reader_;
  std::vector<std::optional<std::size_t>> placeOf_;
  std::size_t cellCount_ = 0;
  std::size_t lineCount_ = 0;
};

/// The columns and what their cells hold, for people.
[[nodiscard]] Table ColumnTable(std::span<const ImportColumn> columns);

}  // namespace qorhost
