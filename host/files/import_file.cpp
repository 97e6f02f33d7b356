#include "host/files/import_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
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

FileError TwiceThere(std::string_view heading, std::size_t line) {
  return FileError(FileProblem::kHeadings,
                   fmt::format("line {}: the column \"{}\" is there twice", line, heading));
}

/// Without the blanks around that a spreadsheet's cells have: tabs and no-break spaces, too.
std::string_view WithoutBlanks(std::string_view cell) {
  const auto isPlain = [](char letter) { return letter > ' ' && letter <= '~'; };
  if (cell.empty() || (isPlain(cell.front()) && isPlain(cell.back()))) {
    return cell;  // as most are
  }
  constexpr std::array<std::string_view, 3> kBlanks{" ", "\t", "\xC2\xA0"};
  const auto cut = [&cell](std::string_view blank) {
    if (cell.starts_with(blank)) {
      cell.remove_prefix(blank.size());
      return true;
    }
    if (cell.ends_with(blank)) {
      cell.remove_suffix(blank.size());
      return true;
    }
    return false;
  };
  while (std::any_of(kBlanks.begin(), kBlanks.end(), cut)) {
  }
  return cell;
}

bool AreOneHeading(std::string_view one, std::string_view other) {
  return qorcred::CompareIgnoringCase(WithoutBlanks(one), WithoutBlanks(other)) == 0;
}

bool IsBlank(std::string_view cell) {
  return WithoutBlanks(cell).empty();
}

/// The place that "#3" names.
std::optional<std::size_t> PlaceNamed(std::string_view heading) {
  constexpr std::size_t kMostDigits = 3;
  const std::string_view digits = heading.substr(heading.starts_with('#') ? 1 : heading.size());
  if (!qorcred::IsDigits(digits) || digits.size() > kMostDigits) {
    return std::nullopt;
  }
  const std::size_t number = std::stoul(std::string(digits));
  return number == 0 ? std::nullopt : std::optional(number - 1);
}

}  // namespace

/// One empty cell in quotes is a line of its own.
bool IsBlankRow(const CsvRecord& record) {
  return record.fault.empty() && record.cells.size() > 1 &&
         std::all_of(record.cells.begin(), record.cells.end(), IsBlank);
}

std::optional<std::string_view> ImportLine::Cell(std::size_t column) const {
  const std::optional<std::size_t> place = placeOf_.at(column);
  return place ? std::optional<std::string_view>(record_.cells.at(*place)) : std::nullopt;
}

std::string_view ImportLine::Trimmed(std::size_t column) const {
  return WithoutBlanks(Cell(column).value_or(""));
}

ImportFile::ImportFile(std::string text, std::span<const ImportColumn> columns,
                       const ImportForm& form)
    : text_(TextAsUtf8(std::move(text), form.encoding)),
      columns_(columns),
      form_(FormOf(text_, form.delimiter)),
      reader_(form_.text, form_.delimiter, form_.hasFormLine ? 2 : 1),
      placeOf_(columns.size()) {
  ReadHeadings(form.meant);
  CheckQuotes();
}

std::string ImportFile::KnownHeadings() const {
  std::vector<std::string> headings;
  for (const ImportColumn& column : columns_) {
    if (!column.passedOver) {
      headings.push_back(fmt::format("\"{}\"", column.heading));
    }
  }
  return fmt::format("{}", fmt::join(headings, ", "));
}

std::string_view ImportFile::HeadingOf(std::size_t column) const {
  const std::optional<std::size_t> place = placeOf_.at(column);
  const std::string_view heading = place ? WithoutBlanks(headings_[*place]) : std::string_view();
  return heading.empty() ? columns_[column].heading : heading;
}

std::optional<std::size_t> ImportFile::PlaceCalled(std::string_view heading) const {
  const auto found =
      std::find_if(headings_.begin(), headings_.end(), [heading](const std::string& known) {
        return !IsBlank(known) && AreOneHeading(known, heading);
      });
  return found == headings_.end()
             ? std::nullopt
             : std::optional(static_cast<std::size_t>(found - headings_.begin()));
}

std::optional<std::size_t> ColumnCalled(std::string_view heading,
                                        std::span<const ImportColumn> columns) {
  for (std::size_t column = 0; column < columns.size(); ++column) {
    const ImportColumn& known = columns[column];
    if (AreOneHeading(heading, known.heading) ||
        (!known.alias.empty() && AreOneHeading(heading, known.alias))) {
      return column;
    }
  }
  return std::nullopt;
}

/// Tells all headings at once that stand for no column, so that nobody has to try them one by one.
void ImportFile::RequireKnownHeadings(std::size_t line) const {
  if (unknown_.empty()) {
    return;
  }
  std::vector<std::string> told;
  for (const UnknownHeading& heading : unknown_) {
    told.push_back(fmt::format("'{}'", Shortened(heading.called)));
  }
  std::vector<std::size_t> taken;
  for (std::size_t column = 0; column < placeOf_.size(); ++column) {
    if (placeOf_[column]) {
      taken.push_back(column);
    }
  }
  const bool otherDelimiter = form_.delimiter == ',' && unknown_.front().called.find_first_of(
                                                            ";\t") != std::string_view::npos;
  throw UnknownHeadings(
      fmt::format("line {}: there {} {}{}; the columns are {}", line,
                  told.size() == 1 ? "is no column" : "are no columns", fmt::join(told, ", "),
                  otherDelimiter ? " (cells must have commas between them)" : "", KnownHeadings()),
      headings_, unknown_, taken);
}

/// What each column of the file is meant to be: nothing where nobody has said it.
std::vector<std::optional<std::string>> ImportFile::NamesOfColumns(
    const std::vector<HeadingMeant>& meant, std::size_t line) const {
  std::vector<std::optional<std::string>> names(headings_.size());
  for (const HeadingMeant& one : meant) {
    const std::optional<std::size_t> byPlace = PlaceNamed(one.heading);
    bool found = false;
    for (std::size_t place = 0; place < headings_.size(); ++place) {
      if (byPlace ? place == *byPlace : AreOneHeading(headings_[place], one.heading)) {
        names[place] = one.column;
        found = true;
      }
    }
    if (!found) {
      throw FileError(FileProblem::kHeadings,
                      fmt::format("line {}: the file has no heading '{}'; its headings are \"{}\"",
                                  line, Shortened(one.heading),
                                  Shortened(fmt::format("{}", fmt::join(headings_, "\", \"")))));
    }
  }
  return names;
}

void ImportFile::ReadHeadings(const std::vector<HeadingMeant>& meant) {
  CsvRecord record;
  if (!reader_.Next(record)) {
    throw FileError(FileProblem::kHeadings,
                    fmt::format("the file is empty: its first line must hold headings out of {}",
                                KnownHeadings()));
  }
  if (!record.fault.empty()) {
    throw FileError(
        FileProblem::kHeadings,
        fmt::format("line {}: {}", record.unclosedQuote.value_or(record.line), record.fault));
  }
  for (std::string& heading : record.cells) {
    headings_.push_back(WithoutFormulaMark(std::move(heading)));
  }
  const auto names = NamesOfColumns(meant, record.line);
  for (std::size_t place = 0; place < headings_.size(); ++place) {
    if (!names[place]) {
      TakeHeading(place, headings_[place], record.line);
    } else if (!names[place]->empty()) {
      TakeHeading(place, *names[place], record.line);
    }
  }
  RequireKnownHeadings(record.line);
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    if (columns_[column].needed && !placeOf_[column]) {
      throw FileError(FileProblem::kHeadings, fmt::format("line {}: the column \"{}\" is missing",
                                                          record.line, columns_[column].heading));
    }
  }
}

void ImportFile::TakeHeading(std::size_t place, const std::string& name, std::size_t line) {
  if (IsBlank(name) && headings_.size() > 1) {
    unheaded_.push_back(place);
    return;
  }
  if (AreOneHeading(name, kReasonHeading)) {
    if (reasonPlace_) {
      throw TwiceThere(kReasonHeading, line);
    }
    reasonPlace_ = place;
  } else if (const auto column = ColumnCalled(name, columns_)) {
    TakeColumn(place, *column, line);
  } else {
    unknown_.push_back({place, name});
  }
}

void ImportFile::TakeColumn(std::size_t place, std::size_t column, std::size_t line) {
  if (placeOf_[column]) {
    throw TwiceThere(columns_[column].heading, line);
  }
  placeOf_[column] = place;
}

/// Runs through the file once: behind a quote that is never closed nothing is what it seems.
void ImportFile::CheckQuotes() {
  CsvReader ahead = reader_;
  CsvRecord record;
  while (ahead.Next(record)) {
    lineCount_ += IsBlankRow(record) ? 0 : 1;
    if (record.unclosedQuote) {
      throw FileError(FileProblem::kUnusable, fmt::format("line {}: {}; nothing was imported",
                                                          *record.unclosedQuote, record.fault));
    }
  }
}

void ImportFile::FindFault(CsvRecord& record) const {
  if (!record.fault.empty()) {
    return;
  }
  if (record.cells.size() != headings_.size()) {
    record.fault = fmt::format("{} cells, but {} headings", record.cells.size(), headings_.size());
    return;
  }
  for (const std::size_t place : unheaded_) {
    if (!IsBlank(record.cells[place])) {
      record.fault = fmt::format(
          "column {} has no heading, and '{}' stands in it: give it a heading, or "
          "say what it is",
          place + 1, Shortened(record.cells[place]));
      return;
    }
  }
}

bool ImportFile::Next(ImportLine& line) {
  CsvRecord& record = line.record_;
  do {
    if (!reader_.Next(record)) {
      return false;
    }
  } while (IsBlankRow(record));
  line.placeOf_ = placeOf_;
  FindFault(record);
  for (std::string& cell : record.cells) {
    cell = WithoutFormulaMark(std::move(cell));
  }
  return true;
}

Table ColumnTable(std::span<const ImportColumn> columns) {
  Table table;
  table.columns = {{"Column", "column"}, {"Needed", "needed"}, {"Cells", "cells"}};
  for (const ImportColumn& column : columns) {
    if (!column.passedOver) {
      table.rows.push_back({std::string(column.heading), column.needed, std::string(column.help)});
    }
  }
  return table;
}

}  // namespace qorhost
