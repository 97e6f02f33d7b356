// A file of separated values with headings, whose lines are to be entered one by one.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/files/csv_form.h"
#include "host/files/csv_reader.h"
#include "host/files/file_error.h"
#include "host/files/table.h"
#include "host/files/text_encoding.h"

namespace qorhost {

/// A column that an import knows; its place in the list of columns is how it is asked for.
struct ImportColumn {
  std::string_view heading;
  bool needed = false;
  std::string_view help;        ///< what its cells hold
  std::string_view alias = {};  ///< another name for it
  bool passedOver = false;      ///< is in files that lists have written, and not looked at
};

/// The column in which a rejected line says why. Every import passes over it.
inline constexpr std::string_view kReasonHeading = "Reason";

/// A heading of the file that stands for another one.
struct HeadingMeant {
  std::string heading;  ///< as it stands in the file, or "#3" for the third one
  std::string column;   ///< the import's; "" leaves the column out
};

/// What somebody says of a file's form; what is left out is found in the file.
struct ImportForm {
  std::optional<char> delimiter = std::nullopt;
  TextEncoding encoding = TextEncoding::kUtf8;
  std::vector<HeadingMeant> meant = {};
};

/// A heading of a file that stands for no column.
struct UnknownHeading {
  std::size_t place = 0;  ///< from 0
  std::string called;     ///< as it stands in the file, or as somebody says that it is meant
};

/// Headings that stand for no column, all of them at once.
class UnknownHeadings : public FileError {
 public:
  UnknownHeadings(const std::string& what, std::vector<std::string> headings,
                  std::vector<UnknownHeading> unknown, std::vector<std::size_t> taken)
      : FileError(FileProblem::kUnknownHeadings, what),
        headings_(std::move(headings)),
        unknown_(std::move(unknown)),
        taken_(std::move(taken)) {}

  /// All that the file has, as they stand there.
  [[nodiscard]] const std::vector<std::string>& headings() const noexcept { return headings_; }
  [[nodiscard]] const std::vector<UnknownHeading>& unknown() const noexcept { return unknown_; }
  /// The columns that other headings stand for.
  [[nodiscard]] const std::vector<std::size_t>& taken() const noexcept { return taken_; }

 private:
  std::vector<std::string> headings_;
  std::vector<UnknownHeading> unknown_;
  std::vector<std::size_t> taken_;
};

/// One line of the file behind the headings.
class ImportLine {
 public:
  /// The line of the file in which it begins, from 1.
  [[nodiscard]] std::size_t number() const { return record_.line; }
  /// Why its cells cannot be used; "" when they can.
  [[nodiscard]] const std::string& fault() const { return record_.fault; }
  /// All cells as they are to be typed, in the order of the file.
  [[nodiscard]] const std::vector<std::string>& cells() const { return record_.cells; }
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
/// Lines without anything in their cells are passed over. A line is at fault when it has something
/// in a column without a heading.
class ImportFile {
 public:
  /// Takes the text of a file. Raises UnknownHeadings, and FileError: kHeadings for those that are
  /// missing or there twice, kUnusable for the quote and for bytes that the encoding does not have.
  ImportFile(std::string text, std::span<const ImportColumn> columns, const ImportForm& form = {});
  ImportFile(const ImportFile&) = delete;
  ImportFile& operator=(const ImportFile&) = delete;

  /// How many lines there are behind the headings.
  [[nodiscard]] std::size_t lineCount() const { return lineCount_; }
  /// Whether the last line has its end: one without may be cut off within its last cell.
  [[nodiscard]] bool endsWithALine() const { return text_.ends_with('\n'); }
  /// False at the end.
  bool Next(ImportLine& line);

  [[nodiscard]] char delimiter() const { return form_.delimiter; }
  /// As they stand in the file.
  [[nodiscard]] const std::vector<std::string>& headings() const { return headings_; }
  /// The place of the column of reasons; nothing when there is none.
  [[nodiscard]] std::optional<std::size_t> reasonPlace() const { return reasonPlace_; }
  [[nodiscard]] bool HasColumn(std::size_t column) const { return placeOf_.at(column).has_value(); }
  /// What the file calls a column; the column's own heading when the file does not have it.
  [[nodiscard]] std::string_view HeadingOf(std::size_t column) const;
  /// Where in a line the column's cell stands, from 0; nothing when the file does not have it.
  [[nodiscard]] std::optional<std::size_t> PlaceOf(std::size_t column) const {
    return placeOf_.at(column);
  }
  /// Where the first heading stands that is called so.
  [[nodiscard]] std::optional<std::size_t> PlaceCalled(std::string_view heading) const;

 private:
  void ReadHeadings(const std::vector<HeadingMeant>& meant);
  void TakeHeading(std::size_t place, const std::string& name, std::size_t line);
  void TakeColumn(std::size_t place, std::size_t column, std::size_t line);
  [[nodiscard]] std::vector<std::optional<std::string>> NamesOfColumns(
      const std::vector<HeadingMeant>& meant, std::size_t line) const;
  void RequireKnownHeadings(std::size_t line) const;
  void CheckQuotes();
  void FindFault(CsvRecord& record) const;
  [[nodiscard]] std::string KnownHeadings() const;

  std::string text_;
  std::span<const ImportColumn> columns_;
  CsvForm form_;
  CsvReader reader_;
  std::vector<std::optional<std::size_t>> placeOf_;
  std::vector<std::string> headings_;
  std::vector<std::size_t> unheaded_;  // places of columns without a heading
  std::vector<UnknownHeading> unknown_;
  std::optional<std::size_t> reasonPlace_;
  std::size_t lineCount_ = 0;
};

/// Which of the columns a heading names, in any letter case and with blanks around it; nothing for
/// one that names none.
[[nodiscard]] std::optional<std::size_t> ColumnCalled(std::string_view heading,
                                                      std::span<const ImportColumn> columns);

/// Whether nothing but blanks stands in a record with several cells: an import passes over it.
[[nodiscard]] bool IsBlankRow(const CsvRecord& record);

/// The columns, whether each is needed, and what their cells hold.
[[nodiscard]] Table ColumnTable(std::span<const ImportColumn> columns);

}  // namespace qorhost
