// The smallest program that runs a controller: a host without components, screen and connection.
#include <credentials/cls_credential.h>
#include <frame/date.h>

#include <iostream>

class SmallHost final : public qorcred::Host {
 public:
  qorcred::ObjectRef CreateComponent(std::string_view) override {
    throw qorcred::RuntimeError(qorcred::ErrorNumber::kCannotCreateComponent);
  }
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override {
    std::cout << title << ": " << text << '\n';
    return style == qorcred::MessageStyle::kQuestion ? qorcred::MessageButton::kNo
                                                     : qorcred::MessageButton::kOk;
  }
  qorcred::Date Now() override { return qorcred::FromCivil({2026, 1, 31, 14, 5, 9}); }
  void LetEventsRun() override {}
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override {
    std::cout << "(" << operation << ": " << failure.what() << ")\n";
  }
};

int main() {
  SmallHost host;
  qorcred::clsCredential controller(host);
  std::cout << controller.pbBase64Dec("NTAw") << '\n';
}
