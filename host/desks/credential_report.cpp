#include "host/desks/credential_report.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "frame/convert.h"
#include "frame/data_services.h"
#include "host/desks/field_names.h"
#include "host/desks/operation_record.h"
#include "host/desks/report_captions.h"
#include "host/desks/typed_input.h"
#include "host/store/rows.h"

namespace qorhost {

namespace {

namespace card_caption = credential_caption;
using qorcred::TableView;
using qorcred::Value;

/// The column of this field is called otherwise.
ReportField TenantNameField() {
  ReportField field{"Tenant Name", FieldKind::kText};
  field.alsoCalled = OtherNames(CredentialNames(), card_caption::kAssignedTo);
  field.alsoCalled.emplace_back(card_caption::kAssignedTo);
  field.unsetWord = "Unassigned";
  return field;
}

ReportField NumberField(std::string_view name) {
  ReportField field{std::string(name), FieldKind::kNumber, 0, false, kFromZero};
  field.alsoCalled = OtherNames(CredentialNames(), name);
  return field;
}

ReportField TypeField() {
  ReportField field{std::string(card_caption::kType), FieldKind::kCredentialType};
  field.alsoCalled = OtherNames(CredentialNames(), card_caption::kType);
  field.leftOut = 1;  // "does not equal" finds the same as "equal"
  return field;
}

/// A column of the report and its place in the statement's result.
struct ReportColumn {
  std::string_view title;
  std::int32_t index;
  FieldKind kind;
  bool isExtra = false;
};
constexpr std::int32_t kTypeNumberAt = 7;
constexpr std::int32_t kRidAt = 8;
constexpr ReportColumn kReportColumns[] = {{card_caption::kType, 0, FieldKind::kCredentialType},
                                           {card_caption::kNumber, 1, FieldKind::kNumber},
                                           {card_caption::kFacility, 2, FieldKind::kNumber},
                                           {card_caption::kIdCode, 3, FieldKind::kNumber},
                                           {card_caption::kSequence, 4, FieldKind::kNumber},
                                           {card_caption::kButton, 5, FieldKind::kNumber},
                                           {card_caption::kAssignedTo, 6, FieldKind::kText},
                                           {card_caption::kRid, kRidAt, FieldKind::kNumber},
                                           {card_caption::kTenantRid, 9, FieldKind::kNumber, true}};

/// The name of a tenant without a middle initial ends in a blank.
Value WithoutBlanksBehind(Value cell) {
  if (auto* text = cell.As<std::string>()) {
    text->erase(text->find_last_not_of(' ') + 1);
  }
  return cell;
}

}  // namespace

/// In their places in `cboField`.
const std::vector<ReportField>& CredentialReport::FilterFields() {
  static const std::vector<ReportField> kFields{TypeField(), NumberField(card_caption::kNumber),
                                                NumberField(card_caption::kFacility),
                                                TenantNameField()};
  return kFields;
}

CredentialReport::CredentialReport(DeskSession& session, std::int32_t unitKey,
                                   const std::vector<std::string>& conditions)
    : session_(session),
      unitKey_(unitKey),
      shown_(session, unitKey),
      filter_(session, conditions.size()),
      controller_("clsCredentialReport", session.host(), session.tracer()) {
  controller_.Set("gfrmTxFilter", filter_.screen());
  controller_.Set("mlngUnitKey", unitKey);
  shown_.TakeUnit();
  controller_.Run<&qorcred::clsCredentialReport::pbPopulateArrOperators>();
  for (std::size_t row = 0; row < filter_.rowCount(); ++row) {
    for (const ReportField& field : FilterFields()) {
      filter_.Fields(row).AddItem(field.name);
    }
  }
  for (std::size_t row = 0; row < conditions.size(); ++row) {
    const ReportCondition condition = ReadCondition(conditions[row], FilterFields());
    filter_.Enter(row, condition, FilterFields()[static_cast<std::size_t>(condition.field)].kind);
  }
}

std::string CredentialReport::FieldNames() {
  std::vector<std::string_view> names;
  for (const ReportField& field : FilterFields()) {
    names.emplace_back(field.name);
  }
  return fmt::format("{}", fmt::join(names, ", "));
}

Outcome CredentialReport::Run() {
  shown_.TakeUnit();
  OperationRecord running(session_);
  return running.End(controller_.Run<&qorcred::clsCredentialReport::pbGenSql>(
      session_.connection(), unitKey_, rows_, statement_));
}

List CredentialReport::Rows() const {
  List list;
  list.title = "Credentials";
  for (const ReportColumn& column : kReportColumns) {
    const std::string title(column.title);
    ListField& field = list.fields.emplace_back(ListField{title, title, column.kind});
    field.isExtra = column.isExtra;
    field.otherNames = OtherNames(CredentialNames(), title);
  }
  const TableView rows(rows_);
  if (rows.HasNoRows()) {
    return list;
  }
  for (const std::int32_t row : RowNumbersOf(rows)) {
    std::vector<Value> cells;
    cells.reserve(std::size(kReportColumns));
    for (const ReportColumn& column : kReportColumns) {
      cells.push_back(WithoutBlanksBehind(rows.Cell(row, column.index)));
    }
    // One type has one name everywhere; the statement spells it in its own way.
    const std::string_view type = TypeNameOf(qorcred::NumericValue(rows.Cell(row, kTypeNumberAt)));
    if (!type.empty()) {
      cells.front() = Value(type);
    }
    list.rows.push_back(std::move(cells));
  }
  return list;
}

/// Whether the last run's statement gives the same rows of these credentials as it did then.
bool CredentialReport::ShowsStill(const GivenRids& rids) {
  if (statement_.empty()) {
    return true;  // nothing was shown
  }
  const QueryResult now = session_.sql().Select(statement_);
  const TableView then(rows_);
  const auto rowsOf = [&rids](const TableView& table) {
    std::vector<std::vector<Value>> found;
    if (table.HasNoRows()) {
      return found;
    }
    for (const std::int32_t row : RowNumbersOf(table)) {
      if (rids.Holds(table.Cell(row, kRidAt))) {
        std::vector<Value>& cells = found.emplace_back();
        for (const ReportColumn& column : kReportColumns) {
          cells.push_back(table.Cell(row, column.index));
        }
      }
    }
    return found;
  };
  return rowsOf(TableView(qorcred::ObjectRef(now.table))) == rowsOf(then);
}

DeletedCredentials CredentialReport::Delete(const GivenRids& rids) {
  controller_.Set("gstrRIDsForDeletion", rids.text());
  DeletedCredentials deleted;
  deleted.given = rids.count();
  const UnitVersion shown = shown_.version();
  const std::string& list = rids.text();
  (void)shown_.TakeRows(
      {{fmt::format("SELECT * FROM CREDENTIALBANK WHERE UnitKey={} AND RID IN ({}) ORDER BY RID",
                    unitKey_, list),
        ShownAs::kRow, "CREDENTIALBANK"},
       {fmt::format("SELECT * FROM TENANTS WHERE UnitKey={} AND (CREDENTIALID1 IN ({}) OR "
                    "CREDENTIALID2 IN ({})) ORDER BY RID",
                    unitKey_, list, list),
        ShownAs::kHolder, "TENANTS"}});
  if (!ShowsStill(rids)) {
    deleted.ending = Ending::kStale;
    deleted.cause = StaleCause::kRowChanged;
    deleted.changes = session_.sql().audit().After(shown.entry, unitKey_);
    return deleted;
  }
  const auto run = [&] {
    OperationRecord deleting(session_);
    deleted.rows = 0;
    return deleting.End(controller_.Run<&qorcred::clsCredentialReport::pbDelete>(
        session_.connection(), unitKey_, deleted.rows));
  };
  // The report keeps nothing between two runs: its controller may run again.
  static_cast<Outcome&>(deleted) =
      RunAsWork(session_, shown_, {"delete credentials of the report", run, [] {}});
  return deleted;
}

}  // namespace qorhost
