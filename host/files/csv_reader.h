// Comma-separated values (RFC 4180) from outside, record by record.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qorhost {

/// One record: its cells, or why it has none that can be used.
struct CsvRecord {
  std::size_t line = 0;  ///< the line of the text in which it begins, from 1
  std::vector<std::string> cells;
  std::string fault;                         ///< "" when the cells are whole
  std::optional<std::size_t> unclosedQuote;  ///< the line of a quote that nothing closes
};

/// Reads records with commas, or another delimiter, between cells, ended by LF or CR LF. A cell in
/// quotes may hold delimiters, line ends and doubled quotes. Lines without a character are passed
/// over, a byte order mark too. The text must outlive the reader. Time and memory are linear in it.
class CsvReader {
 public:
  /// The longest cell in bytes, as long as a spreadsheet's.
  static constexpr std::size_t kLongestCell = 32767;
  static constexpr std::size_t kMostCells = 256;

  /// `firstLine` is the line of the file in which the text begins.
  explicit CsvReader(std::string_view text, char delimiter = ',', std::size_t firstLine = 1);

  /// False at the end. A record with a fault does not keep the next one from being read; one with
  /// an unclosed quote is the last.
  bool Next(CsvRecord& record);

 private:
  enum class End : bool { kCell, kRecord };

  [[nodiscard]] bool AtEnd() const { return at_ == text_.size(); }
  End ReadCell(CsvRecord& record);
  bool ReadQuoted(CsvRecord& record, std::string& cell);
  End ReadPlain(CsvRecord& record, std::string& cell);
  void PassEmptyLines();

  std::string_view text_;
  char delimiter_;
  std::size_t at_ = 0;
  std::size_t line_;
};

}  // namespace qorhost
