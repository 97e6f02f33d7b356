// What the controllers of both report screens share.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "frame/controls.h"
#include "frame/data_services.h"
#include "frame/host.h"
#include "frame/member_table.h"
#include "reports/operator_tables.h"

namespace qorcred {

/// The filter screen, the operator tables, the merge of two result tables and the deletion of
/// chosen credentials. Every operation here traps every failure: it reports the failure to the Host
/// and returns False. Nothing of a call is kept but the properties. One thread only.
class ReportController : public Controller {
 public:
  ReportController(const ReportController&) = delete;
  ReportController& operator=(const ReportController&) = delete;
  ~ReportController() override = default;

  /// The screen with the filter rows. Kept until the host sets another or none.
  [[nodiscard]] const ObjectRef& gfrmTxFilter() const { return filterScreen_; }
  void set_gfrmTxFilter(ObjectRef screen) { filterScreen_ = std::move(screen); }

  /// The unit whose data the report shows.
  [[nodiscard]] std::int32_t mlngUnitKey() const { return unitKey_; }
  void set_mlngUnitKey(std::int32_t unitKey) { unitKey_ = unitKey; }

  /// RIDs of the credentials to delete, with commas between them. Goes into statements as it is.
  [[nodiscard]] const std::string& gstrRIDsForDeletion() const { return ridsForDeletion_; }
  void set_gstrRIDsForDeletion(std::string rids) { ridsForDeletion_ = std::move(rids); }

  /// Fills the operator tables. To be called before the credential report's pbGenSql.
  bool pbPopulateArrOperators();

  /// Appends the rows and columns of `arrXDBObj2` but the last row and the last column to
  /// `arrXDBObj1`. What was appended before a failure stays.
  bool pbMergeXArrayDBObjects(const ObjectRef& arrXDBObj1, const ObjectRef& arrXDBObj2);

  /// Whether no tenant of the unit holds one of the credentials in gstrRIDsForDeletion; shows a
  /// message otherwise. `objDB` is the database manager that asks.
  bool pbValidate(const ObjectRef& objConn, std::int32_t lngUnitKey, const ObjectRef& objDB);

  /// Deletes the credentials in gstrRIDsForDeletion unless a tenant holds one. `lngRowsDeleted`
  /// receives the number deleted; none is a failure with a message of its own.
  bool pbDelete(const ObjectRef& objConn, std::int32_t lngUnitKey, std::int32_t& lngRowsDeleted);

 protected:
  explicit ReportController(Host& host) : host_(host) {}

  [[nodiscard]] Host& host() const { return host_; }
  [[nodiscard]] Screen RequireFilterScreen() const { return Screen(filterScreen_); }
  [[nodiscard]] const OperatorTables& operators() const { return *operators_; }
  [[nodiscard]] DatabaseError& error() { return error_; }
  /// A new manager, to be released with the operation that asked for it.
  [[nodiscard]] DatabaseManager NewManager() const;

 private:
  Host& host_;
  ObjectRef filterScreen_;
  std::int32_t unitKey_ = 0;
  std::string ridsForDeletion_;
  const OperatorTables* operators_ = &EmptyOperatorTables();
  DatabaseError error_;
};

}  // namespace qorcred
