// The list of a unit's directory codes, and one code in the edit controls.
#include "dircodes/cls_dir_code.h"
#include "dircodes/code_text.h"
#include "frame/convert.h"
#include "frame/list_rows.h"
#include "frame/row_state.h"
#include "frame/screen_names.h"
#include "frame/sql_text.h"
#include "frame/trap.h"
#include "frame/writing_controls.h"

namespace qorcred {

namespace {

// Columns of the directory-code query.
enum CodeColumn : std::int32_t {
  kRid = 1,
  kCode = 2,
  kPhone = 3,
  kExtension = 4,
  kTimeDelay = 5,
  kDndSchedule = 6,
  kIsDndChecked = 7,
  kCfSchedule = 8,
  kIsCfChecked = 9,
  kCfPhone = 10,
  kCfExtension = 11,
  kCfTimeDelay = 12,
  kLastModified = 13,
  kActive = 14,
  kStartDate = 15,
  kEndDate = 16,
  kDisplayName = 17,
  kShowDisplayName = 18,
  kShowDirectoryCode = 19,
};

std::string CodeQuery(std::int32_t unitKey, std::int32_t rid) {
  return Concat(
      "SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,"
      "ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,"
      "LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE "
      "FROM DIRECTORYCODE WHERE UNITKEY=",
      unitKey, " AND DIRECTORYCODE >=0 ", rid == kNoRid ? std::string() : Concat(" AND RID=", rid),
      " ORDER BY DIRECTORYCODE");
}

std::int32_t CheckStateOf(const Value& cell) {
  return !IsEmptyText(cell) && ToBoolean(cell) ? 1 : 0;
}

Value DateOrNull(const Value& cell) {
  return IsEmptyText(cell) ? Value(Null{}) : cell;
}

// Selects the first entry that carries the schedule's id; without such an entry nothing changes.
void SelectSchedule(const ListControl& list, const Value& scheduleId) {
  if (IsEmptyText(scheduleId)) {
    list.SetListIndex(-1);
    return;
  }
  const double wanted = NumericValue(scheduleId);
  const std::int32_t count = list.ListCount();
  for (std::int32_t index = 0; index < count; ++index) {
    if (list.ItemData(index) != wanted) continue;
    list.SetListIndex(index);
    return;
  }
}

}  // namespace

void clsDirCode::pbRetrieveDirCodes(const ObjectRef& objConn, std::int32_t lngUnitKey,
                                    std::int32_t lngRID, std::int32_t lngOldValue) {
  Trap(host_, "pbRetrieveDirCodes", [&] {
    const Screen screen = RequireScreen();
    const TableView codes = Manager().ExecuteSelect(objConn, CodeQuery(lngUnitKey, lngRID), error_);
    if (lngRID == kNoRid) {
      FillCodeList(screen, codes, lngOldValue);
    } else if (!codes.HasNoRows()) {
      LoadCode(objConn, lngUnitKey, screen, codes);
    }
  });
}

void clsDirCode::FillCodeList(const Screen& screen, const TableView& codes, std::int32_t oldRid) {
  const ListControl list = screen.List("cbodirectorycode");
  list.Clear();
  list.AddItemWithData("<Add New>", kNoRow);
  if (codes.HasNoRows()) return;

  const std::int32_t digits = screen.Box("txtdirectorycode").MaxLength();
  std::int32_t indexToSelect = 0;
  for (std::int32_t row = codes.LowerRow(), last = codes.UpperRow(); row <= last; ++row) {
    const Value rid = AddRow(list, PaddedCode(codes.Cell(row, kCode), digits), codes, row, kRid);
    if (NumericValue(rid) == oldRid) indexToSelect = row + 1;
  }
  if (indexToSelect > 0) list.SetListIndex(indexToSelect);
}

void clsDirCode::LoadCode(const ObjectRef& connection, std::int32_t unitKey, const Screen& screen,
                          const TableView& code) {
  const WritingControls writing(host_, screen, "pbRetrieveDirCodes");
  const auto cell = [&](CodeColumn which) { return code.Cell(0, which); };
  const auto showText = [&](std::string_view box, CodeColumn which) {
    screen.Box(box).SetText(TextOf(host_, cell(which)));
  };
  const auto showCheck = [&](std::string_view box, CodeColumn which) {
    screen.Check(box).SetState(CheckStateOf(cell(which)));
  };
  const auto showNumber = [&](std::string_view spinner, CodeColumn which) {
    screen.Spin(spinner).SetNumber(NumericValue(cell(which)));
  };
  const auto showSchedule = [&](std::string_view name, CodeColumn which) {
    const ListControl list = screen.List(name);
    SelectSchedule(list, cell(which));
  };
  const Value rid = cell(kRid);
  screen.SetVariable("glngrid", rid);

  showText("txtdirectorycode", kCode);
  showText("txtPhoneNo", kPhone);
  showText("txtExtn", kExtension);
  showNumber("pvnTimeDelay", kTimeDelay);
  showCheck("chkDND", kIsDndChecked);
  showSchedule(kDndScheduleList, kDndSchedule);

  showCheck("chkCallForwarding", kIsCfChecked);
  showSchedule(kCfScheduleList, kCfSchedule);
  showText("txtPhoneNocf", kCfPhone);
  showText("txtExtnCF", kCfExtension);
  showNumber("pvnTimeDelayCF", kCfTimeDelay);

  screen.SetVariable("gstrLastModifiedDate", TextOf(host_, cell(kLastModified)));
  showCheck("chkActive", kActive);
  screen.Picker("dtpStart").SetChosen(DateOrNull(cell(kStartDate)));
  screen.Picker("dtpEnd").SetChosen(DateOrNull(cell(kEndDate)));
  showText("txtDisplayName", kDisplayName);
  showCheck("chkShowDisplayName", kShowDisplayName);
  showCheck("chkShowDirCode", kShowDirectoryCode);

  const std::int32_t holdersOf = RoundToLong(NumericValue(rid));
  pbRetrieveTenants(connection, unitKey, holdersOf);
  // Looked up once more for the button: hosts see both queries.
  const bool canSelect =
      !screen.Any("cmdedit").IsEnabled() && pbRetrieveTenants(connection, unitKey, holdersOf);
  screen.Any("cmdSelect").SetEnabled(canSelect);
}

}  // namespace qorcred
