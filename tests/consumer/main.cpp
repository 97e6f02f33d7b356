// A host in small, built against the installed package: it makes every controller, hands one a
// screen and calls it both natively and by member name.
#include <credentials/cls_credential.h>
#include <dircodes/cls_dir_code.h>
#include <reports/cls_credential_report.h>
#include <reports/cls_dir_code_report.h>

#include <iostream>
#include <memory>
#include <string>
#include <string_view>

namespace {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::Value;

/// Stands for the screen and for every component: has every member, and each is empty.
class Blank final : public qorcred::Object {
 public:
  Value Invoke(std::string_view, InvokeKind, Arguments) override { return {}; }
};

class SmallHost final : public qorcred::Host {
 public:
  qorcred::ObjectRef CreateComponent(std::string_view) override {
    return std::make_shared<Blank>();
  }
  qorcred::MessageButton ShowMessage(std::string_view, qorcred::MessageStyle,
                                     std::string_view) override {
    return qorcred::MessageButton::kOk;
  }
  qorcred::Date Now() override { return {}; }
  void LetEventsRun() override {}
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override {
    std::cerr << operation << ": " << failure.what() << '\n';
    ++failures_;
  }

  [[nodiscard]] int failures() const { return failures_; }

 private:
  int failures_ = 0;
};

}  // namespace

int main() {
  SmallHost host;
  qorcred::clsCredential controller(host);

  const std::string native = controller.pbBase64Dec("MjUwMA==");
  const Value lateBound = qorcred::Call(controller, "PBBASE64DEC", "MjUwMA==");
  if (native != "2500" || lateBound != Value("2500")) {
    std::cerr << "The capacity text was not decoded: \"" << native << "\"\n";
    return 1;
  }

  // A screen whose controls are no objects: the failure is trapped and told to the host.
  qorcred::Put(controller, "gmobjCredentialScreen", Value(std::make_shared<Blank>()));
  controller.pbTransmitterCtls(true);
  if (host.failures() != 1) {
    std::cerr << "The host was told of " << host.failures() << " failures instead of 1\n";
    return 1;
  }

  qorcred::clsDirCode codes(host);
  qorcred::clsDirCodeReport codeReport(host);
  qorcred::clsCredentialReport credentialReport(host);
  if (codes.pbBase64Dec("MjUwMA==") != "2500" || !codeReport.pbPopulateArrOperators() ||
      !credentialReport.pbPopulateArrOperators()) {
    std::cerr << "A controller did not do its work\n";
    return 1;
  }

  std::cout << "consumer: decoded " << native << ", and the failure reached the host\n";
  return 0;
}
