#include "host/desktop/screens/report_pages.h"

#include "host/desks/dir_code_report.h"

namespace qorhost {

namespace {

class CredentialSource final : public ReportSource {
 public:
  CredentialSource(DeskSession& session, std::int32_t unitKey) : report_(session, unitKey, {}) {}

  ReportFilter& filter() override { return report_.filter(); }
  [[nodiscard]] std::vector<ReportField> fields() const override {
    return CredentialReport::FilterFields();
  }
  Outcome Run() override { return report_.Run(); }
  [[nodiscard]] List Rows() const override { return Answer(report_.Rows(), {}); }
  DeletedCredentials Delete(const GivenRids& rids) override { return report_.Delete(rids); }

 private:
  CredentialReport report_;
};

class DirCodeSource final : public ReportSource {
 public:
  DirCodeSource(DeskSession& session, std::int32_t unitKey) : report_(session, unitKey) {}

  ReportFilter& filter() override { return report_.filter(); }
  [[nodiscard]] std::vector<ReportField> fields() const override { return report_.FilterFields(); }
  Outcome Run() override {
    const Outcome composed = report_.Compose();
    return composed.done() ? report_.Run() : composed;
  }
  [[nodiscard]] List Rows() const override { return Answer(report_.Rows(), {}); }

 private:
  DirCodeReport report_;
};

}  // namespace

CredentialReportPage::CredentialReportPage(Workplace& place)
    : ReportPage(place, tr("Credential report"), Deleting::kOffered) {
  Open(std::make_unique<CredentialSource>(session(), ReportPage::place().unitKey()));
}

DirCodeReportPage::DirCodeReportPage(Workplace& place)
    : ReportPage(place, tr("Directory-code report"), Deleting::kNotOffered) {
  Open(std::make_unique<DirCodeSource>(session(), ReportPage::place().unitKey()));
}

}  // namespace qorhost
