#include "host/desks/credential_report.h"

#include <memory>
#include <string_view>
#include <utility>

#include "frame/convert.h"
#include "frame/data_services.h"
#include "host/desks/input_fault.h"
#include "host/desks/typed_input.h"
#include "host/store/rows.h"

namespace qorhost {

namespace {

using qorcred::TableView;
using qorcred::Value;

/// The fields in their places in `cboField`.
const std::vector<ReportField>& Fields() {
  static const std::vector<ReportField> kFields{{"Credential Type", FieldKind::kCredentialType},
                                                {"Card Number", FieldKind::kNumber},
                                                {"Facility Code", FieldKind::kNumber},
                                                {"Tenant Name", FieldKind::kText}};
  return kFields;
}

/// A column of the report and its place in the statement's result, which also holds the number of
/// the credential's type.
struct ReportColumn {
  const char* title;
  std::int32_t index;
};
constexpr ReportColumn kColumns[] = {
    {"Credential Type", 0}, {"Card Number", 1},   {"Facility Code", 2}, {"ID Code", 3},
    {"Sequence Number", 4}, {"Button Number", 5}, {"Assigned To", 6},   {"RID", 8},
    {"Tenant RID", 9}};

/// The name of a tenant without a middle initial ends in a blank.
Value WithoutBlanksBehind(Value cell) {
  if (auto* text = cell.As<std::string>()) {
    text->erase(text->find_last_not_of(' ') + 1);
  }
  return cell;
}

}  // namespace

CredentialReport::CredentialReport(DeskSession& session, std::int32_t unitKey,
                                   const std::vector<std::string>& conditions)
    : session_(session),
      unitKey_(unitKey),
      shown_(session, unitKey),
      filter_(session, conditions.size()),
      controller_("clsCredentialReport", session.host(), session.tracer()) {
  controller_.Set("gfrmTxFilter", filter_.visible());
  controller_.Set("mlngUnitKey", unitKey);
  shown_.TakeUnit();
  controller_.Run<&qorcred::clsCredentialReport::pbPopulateArrOperators>();
  for (std::size_t row = 0; row < filter_.rowCount(); ++row) {
    for (const ReportField& field : Fields()) {
      filter_.Fields(row).AddItem(field.name);
    }
  }
  for (std::size_t row = 0; row < conditions.size(); ++row) {
    const ReportCondition condition = ReadCondition(conditions[row], Fields());
    filter_.Enter(row, condition, Fields()[static_cast<std::size_t>(condition.field)].kind);
  }
}

Outcome CredentialReport::Run() {
  shown_.TakeUnit();
  OperationRecord running(session_);
  return running.End(controller_.Run<&qorcred::clsCredentialReport::pbGenSql>(
      session_.connection(), unitKey_, rows_, statement_));
}

Table CredentialReport::Rows(bool withTenantRid) const {
  Table table;
  const std::size_t shown = std::size(kColumns) - (withTenantRid ? 0 : 1);
  for (std::size_t column = 0; column < shown; ++column) {
    table.columns.push_back({kColumns[column].title, kColumns[column].title});
  }
  const TableView rows(rows_);
  if (rows.HasNoRows()) {
    return table;
  }
  for (const std::int32_t row : RowNumbersOf(rows)) {
    std::vector<Value> cells;
    cells.reserve(shown);
    for (std::size_t column = 0; column < shown; ++column) {
      cells.push_back(WithoutBlanksBehind(rows.Cell(row, kColumns[column].index)));
    }
    table.rows.push_back(std::move(cells));
  }
  return table;
}

DeletedCredentials CredentialReport::Delete(const GivenRids& rids) {
  controller_.Set("gstrRIDsForDeletion", rids.text());
  DeletedCredentials deleted;
  deleted.given = rids.count();
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

GivenRids::GivenRids(std::string text) : text_(std::move(text)) {
  std::string_view rest = text_;
  for (bool more = true; more; ++count_) {
    const std::size_t comma = rest.find(',');
    more = comma != std::string_view::npos;
    const std::string_view rid = rest.substr(0, comma);
    if (rid.empty() || rid.find_first_not_of("0123456789") != std::string_view::npos) {
      throw InputFault(report_input::kRids, text_,
                       "{field} '{value}' must be RIDs of the report with commas between them, as "
                       "in 17,18,21");
    }
    (void)ReadLong(report_input::kRids, rid);
    rest.remove_prefix(more ? comma + 1 : rest.size());
  }
}

}  // namespace qorhost
