// Both report controllers on a real store, with the filter screen.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "frame/data_services.h"
#include "host/screens/report_filter_screen.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"
#include "tests/host/end_to_end/store_surroundings.h"

namespace qortest {

/// The operators of texts and of numbers in `cboFilter`; those of numbers are the dates', too.
inline constexpr std::string_view kTextWords[] = {
    "equal",     "does not equal",    "begins with", "does not begin with",
    "ends with", "does not end with", "contains",    "does not contain"};
inline constexpr std::string_view kNumberWords[] = {
    "equal",     "does not equal",     "greater than", "greater than or equal",
    "less than", "less than or equal", "between",      "not between"};
inline constexpr std::int32_t kOperations = 8;

/// What is entered into a row of the directory-code report; dates without one are not chosen.
struct CodeEntry {
  std::int32_t field = 0;
  std::int32_t operation = 0;
  std::string_view value;
  bool checked = false;
  std::optional<qorcred::Date> from;
  std::optional<qorcred::Date> to;
};

/// What is entered into a row of the credential report: `field` is a place, from 0 to 3.
struct CredentialEntry {
  std::int32_t field = 0;
  std::int32_t operation = 0;
  std::string_view word;
  std::string_view value;
  std::string_view secondValue;
  std::int32_t type = 0;
};

/// A statement and what the store made of it.
struct ReportOutcome {
  std::string statement;
  qorcred::DatabaseError error;
  qorcred::ObjectRef rows;
  /// Whether the credential report reported success; for the other one, whether nothing failed.
  bool succeeded = false;

  [[nodiscard]] qorcred::TableView table() const { return qorcred::TableView(rows); }
  [[nodiscard]] bool hasNoRows() const { return table().HasNoRows(); }
  [[nodiscard]] std::int32_t rowCount() const { return hasNoRows() ? 0 : table().UpperRow() + 1; }
};

class ReportDesk : public StoreSurroundings {
 public:
  static constexpr std::size_t kRows = 6;

  ReportDesk();

  [[nodiscard]] qorcred::clsDirCodeReport& codes() { return *codes_; }
  [[nodiscard]] qorcred::clsCredentialReport& credentials() { return *credentials_; }

  /// Nothing is chosen in any row.
  void Clear();
  void Enter(std::size_t row, const CodeEntry& entry);
  void Enter(std::size_t row, const CredentialEntry& entry);

  [[nodiscard]] ReportOutcome ReportCodes(std::int32_t unit);
  [[nodiscard]] ReportOutcome ReportCredentials(std::int32_t unit);
  /// Runs a statement as a report's.
  [[nodiscard]] ReportOutcome Select(std::string statement);

  /// Every cell of every table of the store.
  [[nodiscard]] std::string Dump();

 private:
  template <typename Kind>
  [[nodiscard]] Kind& At(std::string_view name, std::size_t row) const {
    return dynamic_cast<Kind&>(*screen_->Get<qorhost::ControlArrayModel>(name).at(row));
  }
  void ChooseOperator(std::size_t row, std::int32_t operation, std::string_view word);

  std::shared_ptr<qorhost::ScreenModel> screen_;
  std::unique_ptr<qorcred::clsDirCodeReport> codes_;
  std::unique_ptr<qorcred::clsCredentialReport> credentials_;
};

}  // namespace qortest
