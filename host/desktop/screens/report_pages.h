// The credential report and the directory-code report.
#pragma once

#include "host/desktop/screens/report_page.h"

namespace qorhost {

class CredentialReportPage final : public ReportPage {
  Q_OBJECT

 public:
  /// Raises what the desk raises when it cannot be opened.
  explicit CredentialReportPage(Workplace& place);
};

class DirCodeReportPage final : public ReportPage {
  Q_OBJECT

 public:
  explicit DirCodeReportPage(Workplace& place);
};

}  // namespace qorhost
