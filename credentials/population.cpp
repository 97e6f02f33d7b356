// Fills the credential screen's lists and defaults before the user enters anything.
#include <array>

#include "credentials/cls_credential.h"
#include "credentials/credential_type.h"
#include "frame/active_period.h"
#include "frame/convert.h"
#include "frame/date.h"
#include "frame/list_rows.h"
#include "frame/schedules.h"
#include "frame/schema.h"
#include "frame/screen_names.h"
#include "frame/sql_text.h"
#include "frame/trap.h"

namespace qorcred {

namespace {

/// The system colour of a button's face, which marks a box that takes no input.
constexpr auto kButtonFace = static_cast<std::int32_t>(0x8000000FU);

bool IsTrueCell(const Value& cell) {
  return !IsEmptyText(cell) && Equals(cell, true);
}

void SetNoDeactivation(const DatePicker& start, const DatePicker& end, Date today) {
  start.SetChosen(today);
  ShowNextYear(end, today);
  start.SetChosen(Null{});
  end.SetEndOfDay();
  end.SetChosen(Null{});
}

}  // namespace

void clsCredential::pbRetrieveSchedules(const ObjectRef& objConn, std::int32_t lngUnitKey) {
  Trap(host_, "pbRetrieveSchedules", [&] {
    const Screen screen = RequireScreen();
    const TableView schedules =
        Manager().ExecuteSelect(objConn, StoredSchedulesQuery(lngUnitKey), error_);
    PutFixedSchedulesFirst(schedules, {kNoAccess, kFullAccess});

    const std::array<ListControl, 4> lists{
        screen.List(kScheduleLists[0]), screen.List(kScheduleLists[1]),
        screen.List(kScheduleLists[2]), screen.List(kScheduleLists[3])};
    for (const ListControl& list : lists) list.Clear();
    // Never so after the fixed ones were put there, but hosts see the cell being read.
    if (!schedules.HasNoRows()) {
      for (std::int32_t row = schedules.LowerRow(), last = schedules.UpperRow(); row <= last;
           ++row) {
        for (const ListControl& list : lists) {
          AddRow(list, TextOrEmpty(schedules.Cell(row, 1)), schedules, row, 0);
        }
      }
    }
    for (const ListControl& list : lists) list.SetListIndex(1);
  });
}

void clsCredential::pbRetrieveTenants(const ObjectRef& objConn, std::int32_t lngUnitKey) {
  Trap(host_, "pbRetrieveTenants", [&] {
    const Screen screen = RequireScreen();
    const TableView tenants = Manager().ExecuteSelect(
        objConn,
        Concat("SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=",
               lngUnitKey, " AND Resident=0 ORDER BY LastName,FirstName,MiddleInitial "),
        error_);
    const ListControl list = screen.List("cboAssignedTo");
    list.Clear();
    list.AddItemWithData("<Unassigned>", kNoRow);
    if (!tenants.HasNoRows()) AddTenants(list, tenants);
  });
}

void clsCredential::pbRetrieveSettingsFromUnit(const ObjectRef& objConn, std::int32_t lngUnitKey) {
  Trap(host_, "pbRetrieveSettingsFromUnit", [&] {
    const Screen screen = RequireScreen();
    const ListControl types = screen.List("cboCredentialType");
    for (const CredentialTypeName& name : kCredentialTypes) {
      types.AddItemWithData(std::string(name.label), name.type);
    }
    types.SetListIndex(0);

    const TableView settings = Manager().ExecuteSelect(
        objConn,
        Concat("SELECT ", column::IGNOREFACILITYCODE, ", ", column::RECORDDEACTIVATION, ", ",
               column::DEACTIVATIONDATE, ", ", column::DEACTIVATIONDAYS,
               " FROM UnitSettings WHERE UnitKey=", lngUnitKey),
        error_);
    if (IsTrueCell(settings.Cell(0, 0))) {
      const Control box = screen.Any("txtFacilityCode");
      const Control label = screen.Any("lblFacilityCode");
      box.SetEnabled(false);
      label.SetEnabled(false);
      box.SetBackColor(kButtonFace);
      label.SetBackColor(kButtonFace);
    }
    if (screen.Name() == kTenantCreatingScreen) SetDefaultDates(screen, settings);
  });
}

void clsCredential::SetDefaultDates(const Screen& screen, const TableView& settings) {
  const double mode = NumericValue(settings.Cell(0, 1));
  if (mode != 0 && mode != 1 && mode != 2) return;
  const DatePicker start = screen.Picker("dtpStart");
  const DatePicker end = screen.Picker("dtpEnd");
  const Date today = DayOf(host_.Now());
  if (mode == 0) {
    SetNoDeactivation(start, end, today);
  } else if (mode == 1) {
    start.SetChosen(today);
    end.SetChosen(settings.Cell(0, 2));
    end.SetEndOfDay();
  } else {
    start.SetChosen(today);
    const double days = NumericValue(settings.Cell(0, 3));
    end.SetChosen(LastActiveDay(today, days, end.MaxDate()));
    end.SetEndOfDay();
  }
}

}  // namespace qorcred
