#include "host/desks/import_sheet.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "host/files/csv_writer.h"
#include "host/files/file_error.h"

namespace qorhost {

namespace {

constexpr char kDelimiter = ',';

std::size_t LinesIn(const std::vector<std::string>& cells) {
  std::size_t lines = 1;
  for (const std::string& cell : cells) {
    lines += static_cast<std::size_t>(std::count(cell.begin(), cell.end(), '\n'));
  }
  return lines;
}

void AddRecord(std::string& text, const std::vector<std::string>& cells) {
  if (cells.size() == 1 && cells.front().empty()) {
    text += "\"\"";  // a line without a character would be none
  }
  for (std::size_t place = 0; place < cells.size(); ++place) {
    text += place == 0 ? "" : std::string(1, kDelimiter);
    text += CsvField(cells[place], kDelimiter);
  }
  text += '\n';
}

void RequireClosed(const CsvRecord& record) {
  if (record.unclosedQuote) {
    throw FileError(FileProblem::kUnusable,
                    fmt::format("line {}: {}", *record.unclosedQuote, record.fault));
  }
}

}  // namespace

ImportSheet::ImportSheet(std::string text, const ImportForm& form) {
  const std::string whole = TextAsUtf8(std::move(text), form.encoding);
  const CsvForm found = FormOf(whole, form.delimiter);
  CsvReader reader(found.text, found.delimiter);
  CsvRecord record;
  if (!reader.Next(record)) {
    throw FileError(FileProblem::kHeadings, "the file is empty: its first line must hold headings");
  }
  RequireClosed(record);
  if (!record.fault.empty()) {
    throw FileError(FileProblem::kHeadings, fmt::format("line {}: {}", record.line, record.fault));
  }
  headings_ = record.cells;
  meanings_.resize(headings_.size());
  width_ = headings_.size();
  while (reader.Next(record)) {
    RequireClosed(record);
    if (!IsBlankRow(record)) {
      width_ = std::max(width_, record.cells.size());
      rows_.push_back({record.line, record.cells, record.fault, {}});
    }
  }
  endsWithALine_ = whole.ends_with('\n');
}

std::string_view ImportSheet::Cell(std::size_t row, std::size_t place) const {
  const std::vector<std::string>& cells = rows_.at(row).cells;
  return place < cells.size() ? std::string_view(cells[place]) : std::string_view();
}

const SheetRemark* ImportSheet::RemarkOn(std::size_t row) const {
  const std::optional<SheetRemark>& remark = rows_.at(row).remark;
  return remark ? &*remark : nullptr;
}

std::size_t ImportSheet::RefusedCount() const {
  return static_cast<std::size_t>(std::count_if(rows_.begin(), rows_.end(), [](const Row& row) {
    return row.remark && row.remark->refused;
  }));
}

void ImportSheet::ForgetRemarks() {
  for (Row& row : rows_) {
    row.remark.reset();
  }
}

std::string ImportSheet::MeaningOf(std::size_t place, std::span<const ImportColumn> columns) const {
  if (place >= headings_.size()) {
    return {};
  }
  const std::string& name = meanings_[place].value_or(headings_[place]);
  const std::optional<std::size_t> column = ColumnCalled(name, columns);
  return column ? std::string(columns[*column].heading) : std::string();
}

bool ImportSheet::IsMeaningKnown(std::size_t place, std::span<const ImportColumn> columns) const {
  return meanings_.at(place) || headings_[place].empty() ||
         ColumnCalled(headings_[place], columns) ||
         ColumnCalled(headings_[place], std::array{ImportColumn{kReasonHeading, false, {}}});
}

void ImportSheet::SetMeaning(std::size_t place, std::string column) {
  meanings_.at(place) = std::move(column);
}

void ImportSheet::ForgetMeanings() {
  std::fill(meanings_.begin(), meanings_.end(), std::nullopt);
}

void ImportSheet::Mend(std::size_t row, std::size_t place, std::string text) {
  Row& mended = rows_.at(row);
  if (place >= mended.cells.size()) {
    mended.cells.resize(place + 1);
  }
  mended.cells[place] = std::move(text);
  // What was too much and is empty now is no cell any more.
  while (mended.cells.size() > headings_.size() && mended.cells.back().empty()) {
    mended.cells.pop_back();
  }
  mended.fault.clear();
  mended.remark.reset();
  endsWithALine_ = endsWithALine_ || row + 1 == rows_.size();
}

void ImportSheet::Remove(std::vector<std::size_t> rows) {
  std::sort(rows.begin(), rows.end());
  const bool withLast = !rows.empty() && rows.back() + 1 == rows_.size();
  std::size_t at = 0;
  auto next = rows.begin();
  std::erase_if(rows_, [&](const Row&) {
    const bool gone = next != rows.end() && *next == at;
    next = std::find_if(next, rows.end(), [at](std::size_t row) { return row > at; });
    ++at;
    return gone;
  });
  endsWithALine_ = endsWithALine_ || withLast;
}

/// With a line of its own for whatever was between two rows. Rows without usable cells are left
/// out.
std::string ImportSheet::Text() {
  std::string text;
  AddRecord(text, headings_);
  std::size_t line = 1 + LinesIn(headings_);
  for (Row& row : rows_) {
    if (row.line > line) {
      text.append(row.line - line, '\n');
    }
    row.line = std::max(row.line, line);
    line = row.line;
    if (row.fault.empty()) {
      AddRecord(text, row.cells);
      line += LinesIn(row.cells);
    }
  }
  if (!endsWithALine_ && !rows_.empty() && rows_.back().fault.empty()) {
    text.pop_back();
  }
  return text;
}

ImportForm ImportSheet::Form() const {
  ImportForm form;
  form.delimiter = kDelimiter;
  for (std::size_t place = 0; place < meanings_.size(); ++place) {
    if (meanings_[place]) {
      form.meant.push_back({fmt::format("#{}", place + 1), *meanings_[place]});
    }
  }
  return form;
}

void ImportSheet::TakeRemarks(const ImportReport& report) {
  ForgetRemarks();
  auto row = rows_.begin();
  for (const LineRemark& remark : report.remarks) {
    row = std::find_if(row, rows_.end(), [&remark](const Row& one) {
      return one.line == remark.line && one.fault.empty();
    });
    if (row == rows_.end()) {
      return;
    }
    const std::string& text = report.TextOf(remark);
    if (!row->remark) {
      row->remark = SheetRemark{text, remark.refused, remark.place};
      continue;
    }
    row->remark->text += '\n' + text;
    row->remark->refused = row->remark->refused || remark.refused;
    row->remark->place = row->remark->place ? row->remark->place : remark.place;
  }
}

/// A row whose cells are not to be trusted is refused like any other.
void ImportSheet::TakeFaults(ImportReport& report) {
  for (Row& row : rows_) {
    if (!row.fault.empty()) {
      row.remark = SheetRemark{row.fault, true, {}};
      ++report.refused;
      report.ending = report.ending == Ending::kDone ? Ending::kRefused : report.ending;
    }
  }
}

ImportReport ImportSheet::Run(std::span<const ImportColumn> columns, const Import& import) {
  ImportFile file(Text(), columns, Form());
  ImportReport report = import(file);
  if (report.ending == Ending::kCancelled) {
    return report;
  }
  TakeRemarks(report);
  TakeFaults(report);
  if (!report.dryRun) {
    std::erase_if(rows_, [](const Row& row) { return !row.remark || !row.remark->refused; });
    endsWithALine_ = true;
  }
  return report;
}

}  // namespace qorhost
