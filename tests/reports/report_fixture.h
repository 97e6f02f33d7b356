// What the tests of the report controllers share: a recording host with the filter screen and the
// data grid, and the verbs that fill a filter row.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "frame/runtime_error.h"
#include "tests/support/late_bound.h"
#include "tests/support/noted_controllers.h"
#include "tests/support/recording_host.h"

namespace qortest {

inline constexpr std::int32_t kUnit = 7;

/// The words of the text operators, in their order in `cboFilter`.
inline constexpr std::string_view kOperatorWords[] = {
    "equal",     "does not equal",    "begins with", "does not begin with",
    "ends with", "does not end with", "contains",    "does not contain"};

/// A control of one filter row.
template <typename Kind>
Kind& RowControl(RecordingHost& host, std::string_view name, std::int32_t row) {
  const auto& controls = host.controls().Get<qorhost::ControlArrayModel>(name);
  return dynamic_cast<Kind&>(*controls.at(static_cast<std::size_t>(row)));
}

// Filling a row of the filter screen.
/// Offers the field with that number alone and chooses it.
void ChooseField(RecordingHost& host, std::int32_t row, std::int32_t field);
/// Offers four fields and chooses the one at `place`.
void ChooseFieldAt(RecordingHost& host, std::int32_t row, std::int32_t place);
/// Offers `place` + 1 operators, all of them called `word`, and chooses the last.
void ChooseOperator(RecordingHost& host, std::int32_t row, std::int32_t place,
                    std::string_view word = "any");
void EnterValues(RecordingHost& host, std::int32_t row, std::string_view from,
                 std::string_view to = "");
void ChooseDates(RecordingHost& host, std::int32_t row, qorcred::Date from, qorcred::Date to);
/// Nothing is chosen in the row and its boxes are empty.
void ClearRow(RecordingHost& host, std::int32_t row);

/// A report controller on a recording host. The transcript starts behind its creation.
template <typename Report>
class ReportDesk {
 public:
  ReportDesk()
      : host_(std::make_unique<RecordingHost>(ScreenKind::kReportFilter)),
        controller_(std::make_unique<UnderTest<Report>>(host_->host())) {
    controller_->set_gfrmTxFilter(host_->screen());
    controller_->set_mlngUnitKey(kUnit);
    host_->StartOver();
  }

  [[nodiscard]] RecordingHost& host() { return *host_; }
  [[nodiscard]] UnderTest<Report>& controller() { return *controller_; }
  void ReleaseController() { controller_.reset(); }

 private:
  std::unique_ptr<RecordingHost> host_;
  std::unique_ptr<UnderTest<Report>> controller_;
};

using DirCodeReportDesk = ReportDesk<qorcred::clsDirCodeReport>;
using CredentialReportDesk = ReportDesk<qorcred::clsCredentialReport>;

/// Base of the test suites.
template <typename Report>
class ReportTest : public ::testing::Test {
 protected:
  [[nodiscard]] ReportDesk<Report>& Desk() { return desk_; }
  [[nodiscard]] UnderTest<Report>& Controller() { return desk_.controller(); }
  [[nodiscard]] RecordingHost& Host() { return desk_.host(); }
  [[nodiscard]] DatabaseScript& Database() { return desk_.host().database(); }
  [[nodiscard]] const qorcred::ObjectRef& Connection() { return desk_.host().connection(); }

  /// The whole transcript since the arrangement.
  [[nodiscard]] ::testing::AssertionResult TranscriptIs(std::string_view expected) {
    return SameLines(Host().transcript().Read(Detail::kEverything), expected);
  }
  /// The transcript without reads of controls and without components made and released.
  [[nodiscard]] ::testing::AssertionResult EffectsAre(std::string_view expected) {
    return SameLines(Host().transcript().Read(Detail::kEffects), expected);
  }

 private:
  ReportDesk<Report> desk_;
};

using DirCodeReportTest = ReportTest<qorcred::clsDirCodeReport>;
using CredentialReportTest = ReportTest<qorcred::clsCredentialReport>;

/// Both controllers, for what they share.
using BothReports = ::testing::Types<qorcred::clsDirCodeReport, qorcred::clsCredentialReport>;

struct ReportNames {
  template <typename Report>
  static std::string GetName(int /*index*/) {
    return std::is_same_v<Report, qorcred::clsDirCodeReport> ? "DirCodeReport" : "CredentialReport";
  }
};

}  // namespace qortest
