// Fills the directory-code screen's lists and limits before the user edits a code.
#include <array>
#include <optional>

#include "dircodes/cls_dir_code.h"
#include "frame/active_period.h"
#include "frame/convert.h"
#include "frame/list_rows.h"
#include "frame/row_state.h"
#include "frame/schedules.h"
#include "frame/schema.h"
#include "frame/screen_names.h"
#include "frame/sql_text.h"
#include "frame/trap.h"

namespace qorcred {

namespace {

// As Trap(), but a failing call into a result table is raised to the caller: hosts of these
// operations learn of it that way.
template <typename Body>
void TrapButTables(Host& host, std::string_view operation, Body&& body) {
  std::optional<TableFailure> raised;
  Trap(host, operation, [&] {
    try {
      body();
    } catch (const TableFailure& failure) {
      raised = failure;
    }
  });
  if (raised.has_value()) throw TableFailure(*raised);
}

std::string TenantFilter(std::int32_t unitKey, std::int32_t dirCode) {
  const std::string holder = dirCode == kNoRid ? std::string(" AND DirectoryCode=NULL")
                                               : Concat(" AND DirectoryCode=", dirCode);
  return Concat(" FROM Tenants WHERE UnitKey=", unitKey, " AND Resident=0 ", holder);
}

void SetNoDeactivation(const DatePicker& start, const DatePicker& end, Date now) {
  start.SetChosen(now);
  end.SetChosen(now);
  ShowNextYear(end, now);
  end.SetEndOfDay();
  // The pickers go on showing the dates, but as not chosen.
  start.SetChosen(Null{});
  end.SetChosen(Null{});
}

// Lists the display names at the unit; tenants without one are left out.
void ListDisplayNames(const ListControl& list, const TableView& tenants) {
  for (std::int32_t row = tenants.LowerRow(), last = tenants.UpperRow(); row <= last; ++row) {
    std::string name = TextOrEmpty(tenants.Cell(row, 1));
    if (!name.empty()) AddRow(list, std::move(name), tenants, row, 0);
  }
  if (list.ListCount() <= 0) list.AddItemWithData("Display names not found", kNoRow);
}

}  // namespace

void clsDirCode::pbRetrieveSchedules(const ObjectRef& objConn, std::int32_t lngUnitKey) {
  TrapButTables(host_, "pbRetrieveSchedules", [&] {
    const Screen screen = RequireScreen();
    const TableView schedules =
        Manager().ExecuteSelect(objConn, StoredSchedulesQuery(lngUnitKey), error_);
    PutFixedSchedulesFirst(schedules, {kFullAccess, kNoAccess});

    const std::array<ListControl, 2> lists{screen.List(kDndScheduleList),
                                           screen.List(kCfScheduleList)};
    for (const ListControl& list : lists) list.Clear();
    // Never so after the fixed ones were put there, but hosts see the cell being read.
    if (schedules.HasNoRows()) return;
    constexpr std::int32_t kFirstStored = 2;
    const std::int32_t last = schedules.UpperRow();
    if (last >= kFirstStored) schedules.SortByText(kFirstStored, last, 1);
    for (const ListControl& list : lists) {
      for (std::int32_t row = schedules.LowerRow(); row <= last; ++row) {
        AddRow(list, TextOrEmpty(schedules.Cell(row, 1)), schedules, row, 0);
      }
    }
  });
}

void clsDirCode::pbRetrieveSettingsFromUnit(const ObjectRef& objConn, std::int32_t lngUnitKey) {
  TrapButTables(host_, "pbRetrieveSettingsFromUnit", [&] {
    const Screen screen = RequireScreen();
    const TableView settings = Manager().ExecuteSelect(
        objConn,
        Concat("SELECT ", column::MAXDIGITSDIRECTORYCODE, ",", column::IGNOREFACILITYCODE, ", ",
               column::RECORDDEACTIVATION, ", ", column::DEACTIVATIONDATE, ", ",
               column::DEACTIVATIONDAYS, " FROM UnitSettings WHERE UnitKey=", lngUnitKey),
        error_);
    screen.Box("txtdirectorycode").SetMaxLength(NumericValue(settings.Cell(0, 0)));
    // A stored code keeps its dates.
    if (screen.List("cbodirectorycode").ListIndex() > 0) return;
    SetDefaultDates(screen, settings);
  });
}

void clsDirCode::SetDefaultDates(const Screen& screen, const TableView& settings) {
  const double mode = NumericValue(settings.Cell(0, 2));
  const DatePicker start = screen.Picker("dtpStart");
  const DatePicker end = screen.Picker("dtpEnd");
  if (mode == 0) {
    SetNoDeactivation(start, end, host_.Now());
  } else if (mode == 1) {
    start.SetChosen(host_.Now());
    end.SetChosen(settings.Cell(0, 3));
    end.SetEndOfDay();
    start.SetChosen(Null{});
  } else if (mode == 2) {
    const Date now = host_.Now();
    start.SetChosen(now);
    const double days = NumericValue(settings.Cell(0, 4));
    end.SetChosen(LastActiveDay(now, days, end.MaxDate()));
    end.SetEndOfDay();
    start.SetChosen(Null{});
  }
}

bool clsDirCode::pbRetrieveTenants(const ObjectRef& objConn, std::int32_t lngUnitKey,
                                   std::int32_t lngDirCode, bool blnDIsplayName) {
  bool found = false;
  TrapButTables(host_, "pbRetrieveTenants", [&] {
    const Screen screen = RequireScreen();
    const std::string filter = TenantFilter(lngUnitKey, lngDirCode);
    const TableView tenants = Manager().ExecuteSelect(
        objConn,
        blnDIsplayName ? Concat("SELECT TenantID,NameAtUnit ", filter, " ORDER BY NameAtUnit ")
                       : Concat("SELECT TenantID,LastName,FirstName,MiddleInitial", filter,
                                " ORDER BY LastName,FirstName,MiddleInitial "),
        error_);
    const ListControl list = screen.List("lstTenants");
    list.Clear();
    if (tenants.HasNoRows()) {
      list.AddItemWithData("<Unassigned>", kNoRow);
      return;
    }
    if (blnDIsplayName) {
      ListDisplayNames(list, tenants);
    } else {
      AddTenants(list, tenants);
    }
    found = true;
  });
  return found;
}

}  // namespace qorcred
