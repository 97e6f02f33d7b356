// The controller of the credential report screen.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "reports/report_controller.h"

namespace qorcred {

/// Lists a unit's credentials with the tenants that hold them, narrowed by the filter rows.
class clsCredentialReport final : public ReportController {
 public:
  /// `host` must outlive the controller.
  explicit clsCredentialReport(Host& host) : ReportController(host) {}

  /// Composes the statement from all filter rows of gfrmTxFilter into `strSQL`, runs it and puts
  /// its rows into `arrXDBTx`, which must hold a result table. True when the manager reported no
  /// error. Needs the operator tables: see pbPopulateArrOperators().
  bool pbGenSql(const ObjectRef& objConn, std::int32_t lngUnitKey, ObjectRef& arrXDBTx,
                std::string& strSQL);

  /// The public surface above as data.
  [[nodiscard]] static std::span<const Member> MemberTable();
  [[nodiscard]] std::span<const Member> Members() const override { return MemberTable(); }

 private:
  [[nodiscard]] std::string ComposeStatement(std::int32_t unitKey) const;
};

}  // namespace qorcred
