// The credential report of one unit with its controller, worked as an operator works it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/result_table.h"
#include "host/desks/desk_work.h"
#include "host/desks/list.h"
#include "host/desks/outcome.h"
#include "host/desks/report_filter.h"
#include "host/desks/row_names.h"
#include "host/desks/session.h"
#include "reports/cls_credential_report.h"

namespace qorhost {

/// What a deletion from the report tells.
struct DeletedCredentials : Outcome {
  std::size_t given = 0;  ///< RIDs that were to be deleted
  std::int32_t rows = 0;  ///< credentials that were
};

/// Opens the filter screen with a row for every condition. The session must outlive it. Raises
/// InputFault for a condition that cannot be entered.
class CredentialReport {
 public:
  CredentialReport(DeskSession& session, std::int32_t unitKey,
                   const std::vector<std::string>& conditions);

  /// The fields that conditions are on: "Credential Type, Card Number".
  [[nodiscard]] static std::string FieldNames();

  /// The filter rows, and the fields that they are of.
  [[nodiscard]] ReportFilter& filter() { return filter_; }
  [[nodiscard]] static const std::vector<ReportField>& FilterFields();

  /// Composes the statement and runs it.
  Outcome Run();
  /// The statement of the last run.
  [[nodiscard]] const std::string& statement() const { return statement_; }

  /// The columns that the screen shows; the tenants' RIDs are extra.
  [[nodiscard]] List Rows() const;
  /// What the screen shows, for people.
  [[nodiscard]] Table Visible() const { return ForPeople(Answer(Rows(), {})); }

  /// Deletes credentials by their RIDs unless a tenant holds one. Stale where others have changed
  /// one of them, or its holder, since the last run showed it.
  DeletedCredentials Delete(const GivenRids& rids);

 private:
  [[nodiscard]] bool ShowsStill(const GivenRids& rids);

  DeskSession& session_;
  std::int32_t unitKey_;
  ShownState shown_;
  ReportFilter filter_;
  Controlled<qorcred::clsCredentialReport> controller_;
  qorcred::ObjectRef rows_ = std::make_shared<qorcred::ResultTable>();
  std::string statement_;
};

}  // namespace qorhost
