#include "host/files/csv_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "frame/utf8.h"

namespace qorhost {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

void SetFault(CsvRecord& record, std::string fault) {
  if (record.fault.empty()) {
    record.fault = std::move(fault);
  }
}

/// Keeps no more of a cell than the longest one has.
void Take(CsvRecord& record, std::string& cell, std::string_view part) {
  if (cell.size() + part.size() > CsvReader::kLongestCell) {
    SetFault(record, fmt::format("a cell is longer than {} bytes", CsvReader::kLongestCell));
    return;
  }
  cell += part;
}

}  // namespace

CsvReader::CsvReader(std::string_view text, char delimiter, std::size_t firstLine)
    : text_(text), delimiter_(delimiter), line_(firstLine) {
  if (text_.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    text_.remove_prefix(kByteOrderMark.size());
  }
}

void CsvReader::PassEmptyLines() {
  for (;;) {
    const std::string_view rest = text_.substr(at_, 2);
    const std::size_t size = rest.starts_with('\n') ? 1 : rest == "\r\n" ? 2 : 0;
    if (size == 0) {
      return;
    }
    at_ += size;
    ++line_;
  }
}

bool CsvReader::Next(CsvRecord& record) {
  PassEmptyLines();
  if (AtEnd()) {
    return false;
  }
  record.line = line_;
  record.cells.clear();
  record.fault.clear();
  record.unclosedQuote.reset();
  const std::size_t start = at_;
  while (ReadCell(record) == End::kCell) {
  }
  if (!qorcred::IsUtf8(text_.substr(start, at_ - start))) {
    SetFault(record,
             "the line is not valid UTF-8: save the file as UTF-8, or say which encoding it has");
  }
  return true;
}

CsvReader::End CsvReader::ReadCell(CsvRecord& record) {
  std::string cell;
  End end = End::kRecord;
  if (!AtEnd() && text_[at_] == '"') {
    if (ReadQuoted(record, cell)) {
      std::string behind;
      end = ReadPlain(record, behind);
      if (!behind.empty()) {
        SetFault(record, "there is text behind the closing quote of a cell");
      }
    }
  } else {
    end = ReadPlain(record, cell);
  }
  if (record.cells.size() == kMostCells) {
    SetFault(record, fmt::format("there are more than {} cells", kMostCells));
  } else {
    record.cells.push_back(std::move(cell));
  }
  return end;
}

/// Reads from the opening quote to behind the closing one; false when there is none.
bool CsvReader::ReadQuoted(CsvRecord& record, std::string& cell) {
  const std::size_t opened = line_;
  ++at_;
  for (;;) {
    const std::size_t quote = std::min(text_.find('"', at_), text_.size());
    const std::string_view part = text_.substr(at_, quote - at_);
    line_ += static_cast<std::size_t>(std::count(part.begin(), part.end(), '\n'));
    Take(record, cell, part);
    at_ = quote;
    if (AtEnd()) {
      record.unclosedQuote = opened;
      record.fault = "a quote that opens a cell is never closed";
      return false;
    }
    ++at_;
    if (AtEnd() || text_[at_] != '"') {
      return true;
    }
    Take(record, cell, "\"");
    ++at_;
  }
}

/// Reads up to the delimiter or line end and steps over it.
CsvReader::End CsvReader::ReadPlain(CsvRecord& record, std::string& cell) {
  const char stops[] = {delimiter_, '\n'};
  const std::size_t stop =
      std::min(text_.find_first_of(std::string_view(stops, sizeof stops), at_), text_.size());
  std::string_view part = text_.substr(at_, stop - at_);
  at_ = stop;
  const bool delimited = !AtEnd() && text_[at_] == delimiter_;
  if (!delimited && part.ends_with('\r')) {
    part.remove_suffix(1);
  }
  if (part.find('"') != std::string_view::npos) {
    SetFault(
        record,
        "a quote stands inside a cell: put the whole cell in quotes and write the quote twice");
  }
  Take(record, cell, part);
  if (!AtEnd()) {
    ++at_;
    line_ += delimited ? 0 : 1;
  }
  return delimited ? End::kCell : End::kRecord;
}

}  // namespace qorhost
