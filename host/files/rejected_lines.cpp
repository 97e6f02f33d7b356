#include "host/files/rejected_lines.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/files/csv_formula.h"
#include "host/files/csv_writer.h"

namespace qorhost {

RejectedLines::RejectedLines(const ImportFile& file)
    : delimiter_(file.delimiter()),
      width_(file.headings().size()),
      reasonPlace_(file.reasonPlace().value_or(width_)) {
  AddRecord(file.headings(), kReasonHeading);
}

void RejectedLines::Add(const ImportLine& line, std::string_view reason) {
  AddRecord(line.cells(), reason);
  ++count_;
}

/// What stands behind the last heading keeps its place behind the reason.
void RejectedLines::AddRecord(std::vector<std::string> cells, std::string_view reason) {
  cells.resize(std::max(cells.size(), width_));
  if (reasonPlace_ == width_) {
    cells.insert(cells.begin() + static_cast<std::ptrdiff_t>(width_), std::string(reason));
  } else {
    cells[reasonPlace_] = reason;
  }
  for (std::size_t at = 0; at < cells.size(); ++at) {
    if (at > 0) {
      text_ += delimiter_;
    }
    text_ += CsvField(WithoutFormula(cells[at]), delimiter_);
  }
  text_ += "\r\n";
}

void RejectedLines::Write(std::ostream& out) const {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  out << kByteOrderMark << text_;
}

}  // namespace qorhost
