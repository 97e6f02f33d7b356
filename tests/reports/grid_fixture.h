// What the tests of the report's grid share: the layout that is stored, the rows that come and the
// lines that each step writes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/reports/report_fixture.h"

namespace qortest {

inline constexpr std::string_view kReportSql = "SELECT rows FROM DirectoryCode";

/// The captions of the layout for stores that have none.
inline constexpr std::string_view kFixedCaptions[] = {
    "Directory Code",     "Phone No.",        "Phone No. Extension",  "Phone No. Delay",
    "Display Name",       "Directory Status", "Directory Start Date", "Directory End Date",
    "Do Not Disturb",     "DND Schedule",     "Call Forwarding",      "CF Schedule",
    "CF Phone No.",       "CF Extension",     "CF Time Delay",        "Show Display Name",
    "Show Directory Code"};

/// A value item that the test keeps; it stands in the transcript as "colValueItem".
class ReportGridTest : public DirCodeReportTest {
 protected:
  ReportGridTest();

  /// The layout has these captions, each 1200 wide, and the grid as many columns.
  void StoreLayout(const std::vector<std::string>& captions);
  /// The report's rows.
  void AnswerRows(std::vector<Row> rows) { Database().Select("SELECT rows", std::move(rows)); }
  void SetCodeLength(qorcred::Value digits) {
    Database().Replace("SELECT MaxDigitsDirectoryCode", {.rows = {{std::move(digits)}}});
  }

  void Show() { ShowWith(item_); }
  void ShowWith(const qorcred::ObjectRef& item) {
    Controller().pvDirCodeReportResult(kUnit, Connection(), Host().grid(), kReportSql, layout_,
                                       item);
  }

  [[nodiscard]] const qorcred::ObjectRef& Item() const { return item_; }
  [[nodiscard]] const qorcred::ObjectRef& Layout() const { return layout_; }
  /// The captions of the grid's columns.
  [[nodiscard]] std::vector<std::string> Captions();
  /// What the grid shows in a row.
  [[nodiscard]] std::vector<std::string> Shown(std::size_t row = 0);
  /// The lines that begin with `objGrid.` or `colValueItem.` and write something.
  [[nodiscard]] Lines GridWrites();

 private:
  qorcred::ObjectRef item_;
  qorcred::ObjectRef layout_;
};

}  // namespace qortest
