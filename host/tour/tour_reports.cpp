// The tour's part about reports.
#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "frame/convert.h"
#include "host/desks/credential_report.h"
#include "host/desks/dir_code_report.h"
#include "host/desks/row_names.h"
#include "host/files/table.h"
#include "host/store/demo.h"
#include "host/tour/tour_stage.h"

namespace qorhost {

namespace {

using qorcred::Value;

constexpr std::int32_t kUnit = demo::kLongDoorNamesUnit;

std::size_t ColumnOf(const Table& table, std::string_view title) {
  const auto found =
      std::find_if(table.columns.begin(), table.columns.end(),
                   [title](const TableColumn& column) { return column.title == title; });
  return static_cast<std::size_t>(found - table.columns.begin());
}

/// The columns that fit on a page.
Table Columns(const Table& table, const std::vector<std::string_view>& titles) {
  Table narrow;
  narrow.rows.resize(table.rows.size());
  for (const std::string_view title : titles) {
    const std::size_t at = ColumnOf(table, title);
    if (at == table.columns.size()) {
      continue;
    }
    narrow.columns.push_back(table.columns[at]);
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
      narrow.rows[row].push_back(table.rows[row][at]);
    }
  }
  return narrow;
}

class ReportTour {
 public:
  explicit ReportTour(const TourStage& stage)
      : stage_(stage), guide_(stage.guide), session_(stage.session) {}

  void ShowCodes();
  void ShowCredentials();
  void DeleteFromReport();

 private:
  [[nodiscard]] Table Credentials(const std::vector<std::string>& conditions);

  TourStage stage_;
  TourGuide& guide_;
  DeskSession& session_;
};

void ReportTour::ShowCodes() {
  guide_.Chapter("The report of a unit's directory codes");
  const std::string condition = "Call Forwarding = yes";
  guide_.Act(fmt::format("The operator narrows the report: {}", condition));
  DirCodeReport report(session_, kUnit);
  report.Narrow({condition});
  (void)report.Compose();
  (void)report.Run();
  const Table table = report.Visible();
  guide_.ShowTable(
      Columns(table, {"Directory Code", "Phone No.", "Display Name", "Directory Status",
                      "DND Schedule", "CF Schedule", "CF Phone No."}));
  const std::size_t forwarding = ColumnOf(table, "Call Forwarding");
  guide_.Expect(
      forwarding < table.columns.size() && !table.rows.empty() &&
          std::all_of(table.rows.begin(), table.rows.end(),
                      [forwarding](const auto& row) { return row[forwarding] == Value("yes"); }),
      "the report has codes that forward calls and no others");
}

Table ReportTour::Credentials(const std::vector<std::string>& conditions) {
  CredentialReport report(session_, kUnit, conditions);
  guide_.Expect(report.Run().returned, "the store runs the report's statement");
  return ForPeople(WithExtras(report.Rows()));
}

void ReportTour::ShowCredentials() {
  guide_.Chapter("The report of a unit's credentials");
  const std::vector<std::string> conditions{"Credential Type = transmitter",
                                            "Card Number between 301 AND 304"};
  guide_.Act(fmt::format("The operator narrows the report: {}; {}", conditions[0], conditions[1]));
  const Table table = Credentials(conditions);
  guide_.ShowTable(Columns(table, {"Credential Type", "Card Number", "Facility Code", "ID Code",
                                   "Sequence Number", "Assigned To", "RID"}));
  guide_.Expect(table.rows.size() == 4, "the report has four transmitters");
}

void ReportTour::DeleteFromReport() {
  const Table held = Credentials({"Tenant Name begins with Hollis"});
  const Table free = Credentials({"Tenant Name equal"});
  guide_.Expect(!held.rows.empty() && !free.rows.empty(),
                "some credentials are held and some are not");
  if (held.rows.empty() || free.rows.empty()) {
    return;
  }
  const auto ridOf = [](const Table& table, std::size_t row) {
    return qorcred::TextOrEmpty(table.rows[row][ColumnOf(table, "RID")]);
  };
  CredentialReport report(session_, kUnit, {});

  (void)guide_.TakeMessages();
  guide_.Act("The operator marks two credentials for deletion, one of them a tenant's");
  const std::string freeRid = ridOf(free, free.rows.size() - 1);
  guide_.Expect(!report.Delete(GivenRids(ridOf(held, 0) + "," + freeRid)).returned,
                "the deletion is refused");
  stage_.ExpectMessage("Credentials which are assigned to tenants cannot be deleted.");

  guide_.Act("The operator marks the other one alone");
  const DeletedCredentials deleted = report.Delete(GivenRids(freeRid));
  guide_.Expect(deleted.returned && deleted.rows == 1, "one credential is deleted");
  guide_.Result(fmt::format("{} credential deleted", deleted.rows));
}

}  // namespace

void TourReports(const TourStage& stage) {
  ReportTour tour(stage);
  tour.ShowCodes();
  tour.ShowCredentials();
  tour.DeleteFromReport();
}

}  // namespace qorhost
