// The credential report of one unit with its controller, worked as an operator works it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/result_table.h"
#include "host/desks/outcome.h"
#include "host/desks/report_filter.h"
#include "host/desks/session.h"
#include "host/files/table.h"
#include "reports/cls_credential_report.h"

namespace qorhost {

/// What a deletion from the report tells.
struct DeletedCredentials : Outcome {
  std::int32_t rows = 0;
};

/// How many RIDs with commas between them there are. Raises InputFault for anything else.
[[nodiscard]] std::size_t CountRids(std::string_view rids);

/// Opens the filter screen with a row for every condition. The session must outlive it. Raises
/// InputFault for a condition that cannot be entered.
class CredentialReport {
 public:
  CredentialReport(DeskSession& session, std::int32_t unitKey,
                   const std::vector<std::string>& conditions);

  /// Composes the statement and runs it.
  Outcome Run();
  /// The statement of the last run.
  [[nodiscard]] const std::string& statement() const { return statement_; }

  /// The columns that the screen shows.
  [[nodiscard]] Table Visible() const { return Rows(false); }
  /// The same and the tenants' RIDs.
  [[nodiscard]] Table Complete() const { return Rows(true); }

  /// Deletes credentials by their RIDs, with commas between them, unless a tenant holds one.
  DeletedCredentials Delete(const std::string& rids);

 private:
  [[nodiscard]] Table Rows(bool withTenantRid) const;

  DeskSession& session_;
  std::int32_t unitKey_;
  ReportFilter filter_;
  qorcred::clsCredentialReport controller_;
  qorcred::ObjectRef rows_ = std::make_shared<qorcred::ResultTable>();
  std::string statement_;
};

}  // namespace qorhost
