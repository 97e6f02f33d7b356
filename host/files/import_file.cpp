#include "host/files/import_file.h"

#include <fmt/format.h>

#include <utility>

#include "frame/text.h"
#include "host/files/csv_formula.h"
#include "host/files/file_error.h"

namespace qorhost {

namespace {

std::string Shortened(std::string_view text) {
  constexpr std::size_t kMost = 60;
  const std::string_view start = qorcred::LeftUtf16(text, kMost);
  return std::string(start) + (start.size() < text.size() ? "..." : "");
}

}  // namespace

std::optional<std::string_view> ImportLine::Cell(std::size_t column) const {
  const std::optional<std::size_t> place = placeOf_.at(column);
  return place ? std::optional<std::string_view>(record_.cells.at(*place)) : std::nullopt;
}

std::string_view ImportLine::Trimmed(std::size_t column) const {
  return qorcred::Trim(Cell(column).value_or(""));
}

ImportFile::ImportFile(std::string text, std::span<const ImportColumn> columns)
    : text_(std::move(text)), columns_(columns), reader_(text_), placeOf_(columns.size()) {
  ReadHeadings();
  CheckQuotes();
}

std::string ImportFile::KnownHeadings() const {
  std::vector<std::string> headings;
  for (const ImportColumn& column : columns_) {
    headings.push_back(fmt::format("\"{}\"", column.heading));
  }
  return fmt::format("{}", fmt::join(headings, ", "));
}

std::size_t ImportFile::FindColumn(std::string_view heading, std::size_t line) const {
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    if (qorcred::CompareIgnoringCase(qorcred::Trim(heading), columns_[column].heading) == 0) {
      return column;
    }
  }
  const bool otherComma = heading.find_first_of(";\t") != std::string_view::npos;
  throw FileError(
      FileProblem::kHeadings,
      fmt::format("line {}: there is no column '{}'{}; the columns are {}", line,
                  Shortened(heading), otherComma ? " (cells must have commas between them)" : "",
                  KnownHeadings()));
}

void ImportFile::ReadHeadings() {
  CsvRecord headings;
  if (!reader_.Next(headings)) {
    throw FileError(FileProblem::kHeadings,
                    fmt::format("the file is empty: its first line must hold headings out of {}",
                                KnownHeadings()));
  }
  if (!headings.fault.empty()) {
    throw FileError(
        FileProblem::kHeadings,
        fmt::format("line {}: {}", headings.unclosedQuote.value_or(headings.line), headings.fault));
  }
  cellCount_ = headings.cells.size();
  for (std::size_t place = 0; place < cellCount_; ++place) {
    const std::size_t column = FindColumn(headings.cells[place], headings.line);
    if (placeOf_[column]) {
      throw FileError(FileProblem::kHeadings,
                      fmt::format("line {}: the column \"{}\" is there twice", headings.line,
                                  columns_[column].heading));
    }
    placeOf_[column] = place;
  }
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    if (columns_[column].needed && !placeOf_[column]) {
      throw FileError(FileProblem::kHeadings, fmt::format("line {}: the column \"{}\" is missing",
                                                          headings.line, columns_[column].heading));
    }
  }
}

/// Runs through the file once: behind a quote that is never closed nothing is what it seems.
void ImportFile::CheckQuotes() {
  CsvReader ahead = reader_;
  CsvRecord record;
  while (ahead.Next(record)) {
    ++lineCount_;
    if (record.unclosedQuote) {
      throw FileError(FileProblem::kUnusable, fmt::format("line {}: {}; nothing was imported",
                                                          *record.unclosedQuote, record.fault));
    }
  }
}

bool ImportFile::Next(ImportLine& line) {
  CsvRecord& record = line.record_;
  if (!reader_.Next(record)) {
    return false;
  }
  line.placeOf_ = placeOf_;
  if (record.fault.empty() && record.cells.size() != cellCount_) {
    record.fault = fmt::format("{} cells, but {} headings", record.cells.size(), cellCount_);
  }
  for (std::string& cell : record.cells) {
    cell = WithoutFormulaMark(std::move(cell));
  }
  return true;
}

Table ColumnTable(std::span<const ImportColumn> columns) {
  Table table;
  table.columns = {{"Column", "column"}, {"Needed", "needed"}, {"Cells", "cells"}};
  for (const ImportColumn& column : columns) {
    table.rows.push_back(
        {std::string(column.heading), column.needed ? "yes" : "", std::string(column.help)});
  }
  return table;
}

}  // namespace qorhost
