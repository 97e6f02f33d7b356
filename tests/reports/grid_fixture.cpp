#include "tests/reports/grid_fixture.h"

#include <utility>

namespace qortest {

ReportGridTest::ReportGridTest()
    : item_(Host().Watched("colValueItem", std::make_shared<qorhost::GridValueItem>())) {}

void ReportGridTest::StoreLayout(const std::vector<std::string>& captions) {
  std::vector<Row> rows;
  for (const std::string& caption : captions) {
    rows.push_back({caption, 1200, "DirectoryCode." + caption});
  }
  Database().Replace("SELECT FieldNameDisplay, DisplayWidth", {.rows = std::move(rows)});
  Host().ReplaceGrid(captions.size());
}

std::vector<std::string> ReportGridTest::Captions() {
  std::vector<std::string> captions;
  const qorhost::GridColumnsModel& columns = Host().shownGrid().columns();
  for (std::size_t at = 0; at < columns.size(); ++at) {
    captions.push_back(columns.at(at).caption());
  }
  return captions;
}

std::vector<std::string> ReportGridTest::Shown(std::size_t row) {
  std::vector<std::string> texts;
  for (std::size_t at = 0; at < Host().shownGrid().columns().size(); ++at) {
    texts.push_back(Host().shownGrid().Shown(row, at));
  }
  return texts;
}

Lines ReportGridTest::GridWrites() {
  Lines writes;
  for (const std::string& line : Host().transcript().Read(Detail::kEffects)) {
    if (line.starts_with("objGrid.") || line.starts_with("colValueItem.")) writes.push_back(line);
  }
  return writes;
}

}  // namespace qortest
