// A demo building whose reports are read at a desk.
#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/credential_report.h"
#include "host/desks/dir_code_report.h"
#include "host/files/csv_writer.h"
#include "host/files/table.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {

class ReportFixture : public DeskFixture {
 protected:
  ReportFixture() { replays_ = true; }

  static std::vector<std::string> TitlesOf(const Table& table) {
    std::vector<std::string> titles;
    for (const TableColumn& column : table.columns) {
      titles.push_back(column.title);
    }
    return titles;
  }
  /// The cells of a column as texts.
  static std::vector<std::string> ColumnOf(const Table& table, std::string_view title) {
    std::vector<std::string> cells;
    const auto found =
        std::find_if(table.columns.begin(), table.columns.end(),
                     [title](const TableColumn& column) { return column.title == title; });
    EXPECT_NE(found, table.columns.end()) << title;
    if (found == table.columns.end()) {
      return cells;
    }
    for (const auto& row : table.rows) {
      cells.push_back(
          qorcred::TextOrEmpty(row[static_cast<std::size_t>(found - table.columns.begin())]));
    }
    return cells;
  }
  static std::string CsvOf(const Table& table) {
    std::ostringstream out;
    PrintCsv(out, table);
    return out.str();
  }

  /// The report of the unit's directory codes under the conditions, with every column.
  [[nodiscard]] Table Codes(const std::vector<std::string>& conditions = {}) {
    DirCodeReport report(session(), kUnit);
    report.Narrow(conditions);
    EXPECT_TRUE(report.Compose().done());
    EXPECT_TRUE(report.Run().done());
    return ForPeople(WithExtras(report.Rows()));
  }
  /// The same of its credentials.
  [[nodiscard]] Table Credentials(const std::vector<std::string>& conditions = {}) {
    CredentialReport report(session(), kUnit, conditions);
    EXPECT_TRUE(report.Run().done());
    return ForPeople(WithExtras(report.Rows()));
  }
};

}  // namespace qorhost::test
