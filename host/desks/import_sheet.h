// A spreadsheet that is looked at, tried and mended before it is imported.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/import_run.h"
#include "host/files/import_file.h"

namespace qorhost {

/// What the last try of a sheet said of a row.
struct SheetRemark {
  std::string text;
  bool refused = false;                ///< else the row is taken without a part of it
  std::optional<std::size_t> place{};  ///< of the cell that is wrong
};

/// The rows of a file in memory, as they stand there: an import reads them as it would read the
/// file, and its remarks come back to their rows. A row keeps the line that it had in the file, as
/// long as nothing with more lines is entered above it. Places and rows count from 0.
class ImportSheet {
 public:
  /// Takes the text of a file; of `form` the delimiter and the encoding. Raises FileError for a
  /// file without a line, for one with a quote that is never closed and for bytes that the encoding
  /// does not have.
  ImportSheet(std::string text, const ImportForm& form);

  [[nodiscard]] const std::vector<std::string>& headings() const { return headings_; }
  /// How many cells the longest row has, headings included.
  [[nodiscard]] std::size_t width() const { return width_; }
  [[nodiscard]] std::size_t rowCount() const { return rows_.size(); }
  /// The line in which the row begins; the headings are line 1.
  [[nodiscard]] std::size_t LineOf(std::size_t row) const { return rows_.at(row).line; }
  /// "" behind the last cell of a row.
  [[nodiscard]] std::string_view Cell(std::size_t row, std::size_t place) const;
  /// All that was said of the row since it was changed; null for nothing.
  [[nodiscard]] const SheetRemark* RemarkOn(std::size_t row) const;
  [[nodiscard]] std::size_t RefusedCount() const;
  void ForgetRemarks();

  /// What a heading stands for: the column that somebody has named, else the one that is called so;
  /// "" for none of them.
  [[nodiscard]] std::string MeaningOf(std::size_t place,
                                      std::span<const ImportColumn> columns) const;
  /// Whether that is known: whether somebody has said it, or the heading tells.
  [[nodiscard]] bool IsMeaningKnown(std::size_t place, std::span<const ImportColumn> columns) const;
  /// A heading of a column; "" leaves the cells out.
  void SetMeaning(std::size_t place, std::string column);
  void ForgetMeanings();

  /// Enters another text; the row has no remark and no fault of the file's form then.
  void Mend(std::size_t row, std::size_t place, std::string text);
  /// Leaves out rows, in any order.
  void Remove(std::vector<std::size_t> rows);

  /// Has the rows imported, and takes the remarks over. What is stored then is left out, so that
  /// nothing is imported twice: refused rows stay. Raises what ImportFile and the import raise, and
  /// is unchanged then, and after a cancelled import.
  using Import = std::function<ImportReport(ImportFile& file)>;
  ImportReport Run(std::span<const ImportColumn> columns, const Import& import);

 private:
  struct Row {
    std::size_t line = 0;
    std::vector<std::string> cells;
    std::string fault;  ///< of the file's form, until the row is mended
    std::optional<SheetRemark> remark;
  };

  [[nodiscard]] std::string Text();
  void TakeRemarks(const ImportReport& report);
  void TakeFaults(ImportReport& report);
  [[nodiscard]] ImportForm Form() const;

  std::vector<std::string> headings_;
  std::vector<std::optional<std::string>> meanings_;  // for each heading what somebody has named
  std::vector<Row> rows_;
  std::size_t width_ = 0;
  bool endsWithALine_ = true;
};

}  // namespace qorhost
