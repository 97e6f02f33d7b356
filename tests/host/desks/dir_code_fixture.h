// Looks at directory codes in the store behind a desk.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_entry.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {

[[nodiscard]] inline DirCodeEntry WithPhone(std::string phone) {
  DirCodeEntry entry;
  entry.phone = std::move(phone);
  return entry;
}

[[nodiscard]] inline std::vector<std::string> TextsOf(const std::vector<ShownMessage>& messages) {
  std::vector<std::string> texts;
  for (const ShownMessage& message : messages) {
    texts.push_back(message.text);
  }
  return texts;
}

class DirCodeDeskFixture : public DeskFixture {
 protected:
  DirCodeDeskFixture() { replays_ = true; }

  /// The texts of a row by its columns, "Null" for Null.
  using Row = std::map<std::string, std::string>;

  [[nodiscard]] std::vector<Row> RowsOf(const std::string& select) {
    const QueryResult result = session().sql().Select(select);
    std::vector<Row> rows;
    for (const ResultRow cells : result.rows()) {
      Row& row = rows.emplace_back();
      for (std::size_t column = 0; column < result.columns.size(); ++column) {
        const qorcred::Value& cell = cells[static_cast<std::int32_t>(column)];
        row[result.columns[column]] =
            cell.Is(qorcred::ValueType::kNull) ? "Null" : qorcred::ToText(cell);
      }
    }
    return rows;
  }
  /// The row of a code of the unit; empty when there is none.
  [[nodiscard]] Row RowOf(const std::string& code) {
    const std::vector<Row> rows =
        RowsOf("SELECT * FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=" + code);
    return rows.empty() ? Row() : rows.front();
  }
  [[nodiscard]] std::string Stored(const std::string& column, const std::string& code) {
    return Cell("SELECT " + column +
                " FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=" + code);
  }
  [[nodiscard]] std::size_t CodeCount() {
    return CountOf("SELECT RID FROM DIRECTORYCODE WHERE UNITKEY=2");
  }
  /// The tenants of any unit who hold the row.
  [[nodiscard]] std::vector<Row> TenantsOf(std::int32_t rid) {
    return RowsOf("SELECT TenantID, MODIFIED, LASTMODIFIEDDATE FROM Tenants WHERE DIRECTORYCODE=" +
                  std::to_string(rid));
  }
  /// What waits to be sent to the unit.
  [[nodiscard]] std::vector<ProgramStep> Steps() { return session().sql().steps().List(kUnit); }

  [[nodiscard]] AddedDirCode Add(const std::string& code, const DirCodeEntry& entry,
                                 std::int32_t unitKey = kUnit) {
    DirCodeDesk desk(session(), unitKey);
    EnterNewCode(desk, code, entry);
    return desk.AddCode();
  }
  [[nodiscard]] Outcome Change(const std::string& code, const DirCodeEntry& entry,
                               std::int32_t unitKey = kUnit) {
    DirCodeDesk desk(session(), unitKey);
    (void)desk.Select(code);
    (void)EnterDirCodeChange(desk, entry);
    return desk.SaveEdited();
  }
  [[nodiscard]] Outcome Renumber(const std::string& code, const std::string& number) {
    DirCodeDesk desk(session(), kUnit);
    (void)desk.Select(code);
    desk.TypeCode(number);
    return desk.Renumber();
  }
  [[nodiscard]] Outcome Delete(const std::string& code) {
    DirCodeDesk desk(session(), kUnit);
    (void)desk.Select(code);
    return desk.Delete();
  }
};

}  // namespace qorhost::test
