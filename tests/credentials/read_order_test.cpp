// When a result's cells are read: hosts whose tables are objects of their own see it.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

using qorcred::Value;

class ReadOrder : public CredentialTest {
 protected:
  explicit ReadOrder(ScreenKind kind = ScreenKind::kCredential) : CredentialTest(kind) {}

  /// The transcript from the first line of the table behind the query on.
  Lines FromRows() {
    Lines lines = Host().transcript().Read(Detail::kEverything);
    std::size_t first = 0;
    while (first < lines.size() && !lines[first].starts_with("rows")) ++first;
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(first));
    return lines;
  }
};

TEST_F(ReadOrder, OfATenantIsNameEntryAndThenId) {
  Database().On("FROM Tenants", Host().WatchedRow({55, "Doe", "Jane", "Q"}));

  Controller().pbRetrieveTenants(Connection(), kUnit);

  const Lines lines = Host().transcript().Read(Detail::kEverything);
  ASSERT_GE(lines.size(), 7U);
  EXPECT_TRUE(SameLines(Lines(lines.end() - 7, lines.end()), R"~(
    rows(0, 1) -> "Doe"
    rows(0, 2) -> "Jane"
    rows(0, 3) -> "Q"
    cboAssignedTo.AddItem "Doe Jane Q"
    rows(0, 0) -> 55
    cboAssignedTo.NewIndex -> 1
    cboAssignedTo.ItemData(1) = 55
  )~"));
}

TEST_F(ReadOrder, OfAScheduleIsNameEntryAndThenIdInEachList) {
  Database().On("from Schedules", Host().WatchedRow({5, "Day"}));

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  const Lines lines = Host().transcript().Read(Detail::kEverything);
  ASSERT_GE(lines.size(), 14U);
  // The selection of "Full Access" in the four lists comes last.
  EXPECT_TRUE(SameLines(Lines(lines.end() - 14, lines.end() - 4), R"~(
    rows(2, 1) -> "Day"
    cboSchedules3.AddItem "Day"
    rows(2, 0) -> 5
    cboSchedules3.NewIndex -> 2
    cboSchedules3.ItemData(2) = 5
    rows(2, 1) -> "Day"
    cboSchedules4.AddItem "Day"
    rows(2, 0) -> 5
    cboSchedules4.NewIndex -> 2
    cboSchedules4.ItemData(2) = 5
  )~"));
}

TEST_F(ReadOrder, OfTheCredentialListLooksForRowsFirst) {
  Database().On("FROM CREDENTIALBANK", Host().WatchedRow({kUnit, 17, 2, 700, 12, 5, 1, 4, "", 0}));

  Controller().pbRetrieveCredentials(Connection(), kUnit);

  EXPECT_TRUE(SameLines(FromRows(), R"~(
    rows(0, 0) -> 3
    cboCredentials.Clear
    cboCredentials.AddItem "<Add New>"
    cboCredentials.NewIndex -> 0
    cboCredentials.ItemData(0) = "-100"
    rows.LowerBound(1) -> 0
    rows.UpperBound(1) -> 0
    rows(0, 2) -> 2
    rows(0, 3) -> 700
    cboCredentials.AddItem "Transmitter-700"
    rows(0, 1) -> 17
    cboCredentials.NewIndex -> 1
    cboCredentials.ItemData(1) = 17
  )~"));
}

class ReadOrderWithTenants : public ReadOrder {
 protected:
  ReadOrderWithTenants() : ReadOrder(ScreenKind::kTenantCreating) {}
};

TEST_F(ReadOrderWithTenants, OfAFixedDateIsBehindTheStart) {
  Database().On("FROM UnitSettings", Host().WatchedRow({false, 1, "12/31/2026", 30}));

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(SameLines(FromRows(), R"~(
    rows(0, 0) -> False
    Name -> "frmTBL"
    rows(0, 1) -> 1
    Now -> #11/21/2026 10:00:00 AM#
    dtpStart.Value = #11/21/2026#
    rows(0, 2) -> "12/31/2026"
    dtpEnd.Value = "12/31/2026"
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
  )~"));
}

TEST_F(ReadOrderWithTenants, OfADayCountIsBehindTheStart) {
  Database().On("FROM UnitSettings", Host().WatchedRow({false, 2, "12/31/2026", 30}));

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  const Lines lines = FromRows();
  ASSERT_GE(lines.size(), 7U);
  EXPECT_TRUE(SameLines(Lines(lines.begin() + 3, lines.begin() + 7), R"~(
    Now -> #11/21/2026 10:00:00 AM#
    dtpStart.Value = #11/21/2026#
    rows(0, 3) -> 30
    dtpEnd.MaxDate -> #12/31/9999#
  )~"));
}

}  // namespace
}  // namespace qortest
