#include "tests/host/end_to_end/report_desk.h"

#include <utility>
#include <vector>

#include "frame/result_table.h"

namespace qortest {

namespace {

constexpr std::int32_t kCredentialFields = 4;

void ChooseDate(qorhost::PickerModel& picker, std::optional<qorcred::Date> date) {
  picker.Choose(date);
}

}  // namespace

ReportDesk::ReportDesk() {
  screen_ = qorhost::MakeReportFilterScreen(kRows, Now());
  codes_ = std::make_unique<qorcred::clsDirCodeReport>(host());
  credentials_ = std::make_unique<qorcred::clsCredentialReport>(host());
  for (qorcred::ReportController* report :
       std::initializer_list<qorcred::ReportController*>{codes_.get(), credentials_.get()}) {
    report->set_gfrmTxFilter(screen_);
    report->set_mlngUnitKey(kUnit);
    report->pbPopulateArrOperators();
  }
}

void ReportDesk::Clear() {
  for (std::size_t row = 0; row < kRows; ++row) {
    for (const std::string_view list : {"cboField", "cboFilter", "cboType"}) {
      At<qorhost::ListModel>(list, row).Clear();
    }
    for (const std::string_view box : {"txtFrom", "txtTo"}) {
      At<qorhost::TextModel>(box, row).SetText("");
    }
    At<qorhost::CheckModel>("chkBoolean", row).SetState(0);
  }
}

void ReportDesk::ChooseOperator(std::size_t row, std::int32_t operation, std::string_view word) {
  auto& operators = At<qorhost::ListModel>("cboFilter", row);
  operators.Clear();
  for (std::int32_t place = 0; place < kOperations; ++place) {
    operators.AddItem(std::string(word));
  }
  operators.Select(operation);
}

void ReportDesk::Enter(std::size_t row, const CodeEntry& entry) {
  auto& fields = At<qorhost::ListModel>("cboField", row);
  fields.Clear();
  fields.AddItem("field");
  qorcred::Put(fields, "ItemData", std::int32_t{0}, entry.field);
  fields.Select(0);
  ChooseOperator(row, entry.operation, "any");
  At<qorhost::TextModel>("txtFrom", row).SetText(std::string(entry.value));
  At<qorhost::CheckModel>("chkBoolean", row).SetState(entry.checked ? 1 : 0);
  ChooseDate(At<qorhost::PickerModel>("dtpDateFrom", row), entry.from);
  ChooseDate(At<qorhost::PickerModel>("dtpDateTo", row), entry.to);
}

void ReportDesk::Enter(std::size_t row, const CredentialEntry& entry) {
  auto& fields = At<qorhost::ListModel>("cboField", row);
  fields.Clear();
  for (std::int32_t place = 0; place < kCredentialFields; ++place) fields.AddItem("field");
  fields.Select(entry.field);
  ChooseOperator(row, entry.operation, entry.word);
  At<qorhost::TextModel>("txtFrom", row).SetText(std::string(entry.value));
  At<qorhost::TextModel>("txtTo", row).SetText(std::string(entry.secondValue));
  auto& types = At<qorhost::ListModel>("cboType", row);
  types.Clear();
  types.AddItem("type");
  qorcred::Put(types, "ItemData", std::int32_t{0}, entry.type);
  types.Select(0);
}

ReportOutcome ReportDesk::ReportCodes(std::int32_t unit) {
  return Select(codes_->pbGenSql(connection(), unit));
}

ReportOutcome ReportDesk::ReportCredentials(std::int32_t unit) {
  ReportOutcome outcome;
  outcome.rows = std::make_shared<qorcred::ResultTable>();
  outcome.succeeded = credentials_->pbGenSql(connection(), unit, outcome.rows, outcome.statement);
  return outcome;
}

ReportOutcome ReportDesk::Select(std::string statement) {
  ReportOutcome outcome;
  outcome.statement = statement;
  const qorcred::DatabaseManager manager(host().CreateComponent("qorDBI.clsDBManager"));
  outcome.rows =
      manager.ExecuteSelect(connection(), std::move(statement), outcome.error).reference();
  outcome.succeeded = !outcome.error.flag && outcome.error.text.empty();
  return outcome;
}

std::string ReportDesk::Dump() {
  return qorhost::test::DumpOf(store().store());
}

}  // namespace qortest
