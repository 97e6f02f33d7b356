// When a result's cells are read: hosts whose tables are objects of their own see it.
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "tests/dircodes/dir_code_fixture.h"
#include "tests/support/overlaid_object.h"

namespace qortest {
namespace {

using qorcred::Null;
using qorcred::Value;

class DirCodeReadOrder : public DirCodeTest {
 protected:
  /// The answer to the query is a watched table of one row, "rows" in the transcript.
  void AnswerWatched(std::string_view query, const std::vector<Value>& cells) {
    Database().On(std::string(query), Host().WatchedRow(cells));
  }
  /// The last lines of the transcript.
  Lines Last(std::ptrdiff_t count) {
    const Lines lines = Host().transcript().Read(Detail::kEverything);
    if (static_cast<std::ptrdiff_t>(lines.size()) < count) return lines;
    return Lines(lines.end() - count, lines.end());
  }
};

TEST_F(DirCodeReadOrder, OfATenantIsNameEntryAndThenId) {
  AnswerWatched("FROM Tenants", {55, "Doe", "Jane", "Q"});

  EXPECT_TRUE(Controller().pbRetrieveTenants(Connection(), kUnit, kStoredRow));

  EXPECT_TRUE(SameLines(Last(7), R"~(
    rows(0, 1) -> "Doe"
    rows(0, 2) -> "Jane"
    rows(0, 3) -> "Q"
    lstTenants.AddItem "Doe Jane Q"
    rows(0, 0) -> 55
    lstTenants.NewIndex -> 0
    lstTenants.ItemData(0) = 55
  )~"));
}

TEST_F(DirCodeReadOrder, OfADisplayNameIsNameEntryAndThenId) {
  AnswerWatched("FROM Tenants", {55, "Jane"});

  EXPECT_TRUE(Controller().pbRetrieveTenants(Connection(), kUnit, kStoredRow, true));

  EXPECT_TRUE(SameLines(Last(6), R"~(
    rows(0, 1) -> "Jane"
    lstTenants.AddItem "Jane"
    rows(0, 0) -> 55
    lstTenants.NewIndex -> 0
    lstTenants.ItemData(0) = 55
    lstTenants.ListCount -> 1
  )~"));
}

TEST_F(DirCodeReadOrder, OfAScheduleIsNameEntryAndThenId) {
  AnswerWatched("from Schedules", {5, "Day"});

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  EXPECT_TRUE(SameLines(Last(5), R"~(
    rows(2, 1) -> "Day"
    cboSchedulesCF.AddItem "Day"
    rows(2, 0) -> 5
    cboSchedulesCF.NewIndex -> 2
    cboSchedulesCF.ItemData(2) = 5
  )~"));
}

TEST_F(DirCodeReadOrder, OfACodeIsNumberEntryAndThenRow) {
  AnswerWatched("SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER", {kUnit, kStoredRow, 12});

  Controller().pbRetrieveDirCodes(Connection(), kUnit);

  EXPECT_TRUE(SameLines(Last(5), R"~(
    rows(0, 2) -> 12
    cbodirectorycode.AddItem "12"
    rows(0, 1) -> 17
    cbodirectorycode.NewIndex -> 1
    cbodirectorycode.ItemData(1) = 17
  )~"));
}

// The list is fetched before the cell is read: a screen without it ends the loading there.
TEST_F(DirCodeReadOrder, OfALoadedCodesScheduleIsListAndThenCell) {
  std::vector<Value> cells(20, Value(Null{}));
  cells[0] = kUnit;
  cells[1] = kStoredRow;
  AnswerWatched("SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER", cells);
  Controller().set_mobjDirCodeScreen(WithoutMember(Host().screen(), "cboSchedules"));

  Controller().pbRetrieveDirCodes(Connection(), kUnit, kStoredRow);

  EXPECT_EQ(Host().transcript().StartingWith("rows(0, 7)").size(), 1U);
  EXPECT_TRUE(Host().transcript().StartingWith("rows(0, 6)").empty());
}

TEST_F(DirCodeReadOrder, OfAFixedDateIsBehindTheStart) {
  AnswerWatched("FROM UnitSettings", {4, false, 1, "12/31/2026", 30});

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(SameLines(Last(8), R"~(
    Now -> #11/21/2026 10:00:00 AM#
    dtpStart.Value = #11/21/2026 10:00:00 AM#
    rows(0, 3) -> "12/31/2026"
    dtpEnd.Value = "12/31/2026"
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
    dtpStart.Value = Null
  )~"));
}

TEST_F(DirCodeReadOrder, OfADayCountIsBehindTheStart) {
  AnswerWatched("FROM UnitSettings", {4, false, 2, "12/31/2026", 30});

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  const Lines last = Last(9);
  ASSERT_EQ(last.size(), 9U);
  EXPECT_TRUE(SameLines(Lines(last.begin(), last.begin() + 4), R"~(
    Now -> #11/21/2026 10:00:00 AM#
    dtpStart.Value = #11/21/2026 10:00:00 AM#
    rows(0, 4) -> 30
    dtpEnd.MaxDate -> #12/31/9999#
  )~"));
}

}  // namespace
}  // namespace qortest
