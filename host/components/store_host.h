// The host of the reference application: components on a store, a clock, message boxes and a log.
#pragma once

#include <functional>
#include <string_view>

#include "frame/host.h"
#include "host/components/components.h"
#include "host/store/time_stamp.h"

namespace qorhost {

/// What a host does when a controller shows a message; returns the button that closes it.
using MessageBox = std::function<qorcred::MessageButton(
    std::string_view text, qorcred::MessageStyle style, std::string_view title)>;

/// Receives the failures that operations trapped: for the diagnostic log, not for the operator.
using FailureLog =
    std::function<void(std::string_view operation, const qorcred::RuntimeError& failure)>;

/// The computer's local time, to the second.
[[nodiscard]] Clock SystemClock();
/// The same in UTC.
[[nodiscard]] Clock UtcClock();

/// What a message that is shown to nobody is answered: a notice OK, a question No.
[[nodiscard]] inline qorcred::MessageButton UnseenAnswer(qorcred::MessageStyle style) {
  return style == qorcred::MessageStyle::kQuestion ? qorcred::MessageButton::kNo
                                                   : qorcred::MessageButton::kOk;
}

class StoreHost final : public qorcred::Host {
 public:
  struct Services {
    ComponentRegistry components = StoreComponents();
    Clock clock = SystemClock();
    /// Unless given, notices are closed with OK and questions answered with No.
    MessageBox messageBox;
    FailureLog failureLog;
    std::function<void()> letEventsRun;
  };

  explicit StoreHost(Services services);

  qorcred::ObjectRef CreateComponent(std::string_view programmaticId) override;
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override;
  qorcred::Date Now() override;
  void LetEventsRun() override;
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override;

 private:
  Services services_;
};

}  // namespace qorhost
