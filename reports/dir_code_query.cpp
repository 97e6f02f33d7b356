// The statement of the directory-code report.
#include "frame/convert.h"
#include "frame/format.h"
#include "frame/sql_text.h"
#include "frame/text.h"
#include "reports/cls_dir_code_report.h"
#include "reports/dir_code_fragments.h"

namespace qorcred {

namespace {

/// The filter screen's rows that count; further ones are not looked at.
constexpr std::int32_t kFilterRows = 5;

constexpr std::int32_t kNoneSelected = -1;

constexpr std::string_view kFixedList =
    "DirectoryCode.DirectoryCode, DirectoryCode.PhoneNumber, DirectoryCode.Extension, "
    "DirectoryCode.TimeDelay,"
    " DirectoryCode.DisplayName, DirectoryCode.Active, DirectoryCode.StartDate, "
    "DirectoryCode.EndDate,"
    " DirectoryCode.IsDNDChecked, DirectoryCode.DNDScheduleID, DirectoryCode.IsCFChecked,"
    " DirectoryCode.CFScheduleID, DirectoryCode.CFPhoneNumber, DirectoryCode.CFExtension,"
    " DirectoryCode.CFTimeDelay, DirectoryCode.ShowDisplayName, DirectoryCode.ShowDirectoryCode,";

// The text of a filter row's value: trimmed, and for fields with number values the number alone.
std::string ValueText(const TextBox& box, bool isNumber) {
  const std::string text = box.Text();
  const std::string_view trimmed = Trim(text);
  if (!isNumber) return std::string(trimmed);
  return trimmed.empty() ? std::string(kNoNumber) : NumberText(Val(trimmed));
}

void SetTime(const DatePicker& picker, std::int32_t hour, std::int32_t minute,
             std::int32_t second) {
  picker.SetMinute(minute);
  picker.SetHour(hour);
  picker.SetSecond(second);
}

}  // namespace

std::string clsDirCodeReport::pbGenSql(const ObjectRef& objConn, std::int32_t intUnitKey) {
  const DatabaseManager manager = NewManager();
  const std::string list = SelectList(objConn, manager);
  const std::string filter = pvBuildDirCodeFilter(objConn, manager, intUnitKey);
  return Concat("SELECT ", list, " FROM DirectoryCode WHERE DirectoryCode.UnitKey = ", intUnitKey,
                " AND DirectoryCode.DirectoryCode >= 0", filter,
                " Order By UCase(DirectoryCode.DisplayName)");
}

std::string clsDirCodeReport::SelectList(const ObjectRef& connection,
                                         const DatabaseManager& manager) {
  const TableView fields = manager.ExecuteSelect(
      connection,
      "SELECT FieldName FROM TenantSelectionFields WHERE FieldName LIKE 'DirectoryCode._%' ORDER "
      "BY DisplaySeq",
      error());
  std::string list;
  if (fields.HasNoRows()) {
    list = kFixedList;
  } else {
    const std::int32_t last = fields.UpperRow();
    for (std::int32_t row = 0; row <= last; ++row) {
      list += TextOrEmpty(fields.Cell(row, 0));
      list += ", ";
    }
  }
  // Of stored fields the last comma stays. Stores of the hosts take it.
  list.pop_back();
  return list;
}

std::string clsDirCodeReport::pvBuildDirCodeFilter(const ObjectRef& connection,
                                                   const DatabaseManager& manager,
                                                   std::int32_t unitKey) {
  std::string filter;
  for (std::int32_t row = 0; row < kFilterRows; ++row) {
    filter += FilterRow(connection, manager, unitKey, row);
  }
  return filter;
}

std::string clsDirCodeReport::FilterRow(const ObjectRef& connection, const DatabaseManager& manager,
                                        std::int32_t unitKey, std::int32_t row) {
  const Screen screen = RequireFilterScreen();
  const ListControl fields = screen.Array("cboField").List(row);
  const ListControl operations = screen.Array("cboFilter").List(row);
  const std::int32_t chosenField = fields.ListIndex();
  const std::int32_t chosenOperation = operations.ListIndex();
  if (chosenField == kNoneSelected || chosenOperation == kNoneSelected) return {};

  const std::int16_t field = ToInteger(fields.SelectedItemData());
  const std::int32_t operation = operations.ListIndex();
  const std::string column = pvGetFilterFieldName(connection, manager, field);
  const bool isNo = Equals(screen.Array("chkBoolean").Check(row).State(), 0);

  // The times are set on the screen itself, whatever the field.
  const DatePicker fromPicker = screen.Array("dtpDateFrom").Picker(row);
  const DatePicker toPicker = screen.Array("dtpDateTo").Picker(row);
  SetTime(fromPicker, 0, 0, 0);
  SetTime(toPicker, 23, 59, 59);
  const Value from = fromPicker.Chosen();
  const Value to = toPicker.Chosen();

  const bool isNumber = HasNumberValues(field);
  const std::string value = ValueText(screen.Array("txtFrom").Box(row), isNumber);
  // Prepared as the first one is, but no condition uses it.
  (void)ValueText(screen.Array("txtTo").Box(row), isNumber);

  const std::string fromText = TextOf(host(), from);
  const std::string toText = TextOf(host(), to);
  const std::string fromDay = Format(from, "DD MM YYYY");
  return ConditionFor(field, operation,
                      {.column = column,
                       .value = value,
                       .answer = isNo ? "No" : "Yes",
                       .from = fromText,
                       .to = toText,
                       .fromDay = fromDay,
                       .unitKey = unitKey});
}

std::string clsDirCodeReport::pvGetFilterFieldName(const ObjectRef& connection,
                                                   const DatabaseManager& manager,
                                                   std::int16_t fieldId) {
  const TableView names = manager.ExecuteSelect(
      connection,
      Concat("SELECT FieldName FROM TenantSelectionFields WHERE FieldName LIKE 'DirectoryCode._%' "
             "AND RID = ",
             std::int32_t{fieldId}),
      error());
  return TextOrEmpty(names.Cell(0, 0));
}

}  // namespace qorcred
