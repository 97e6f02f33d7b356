// Doubles of the sibling components and of the host's own services.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/date.h"
#include "frame/host.h"
#include "frame/object.h"
#include "tests/support/fault_gate.h"
#include "tests/support/scripted_database.h"

namespace qortest {

/// What the services answer.
struct ServiceScript {
  DatabaseScript database;
  /// The identifier of a component that cannot be created; empty when all can.
  std::string missing;
  /// A unit's counts of credentials, entry codes and directory codes.
  std::string credentials = "0";
  std::string entryCodes = "0";
  std::string directoryCodes = "0";
  /// What components make of the unit key and of the row that they are handed by reference; as they
  /// were when there is none.
  std::optional<std::int32_t> unitKeyAfterwards;
  std::optional<std::int32_t> rowAfterwards;
  /// Link codes count up from here; a tenant's id is its row's identity plus 1000.
  std::int32_t linkCode = 5;
  qorcred::Date now = qorcred::FromCivil({2026, 11, 21, 10, 0, 0});
  /// The text of every date; the host's default text when empty.
  std::string dateText;
  /// What `now` becomes at the next readings of the clock, one at a time.
  std::deque<qorcred::Date> nextTimes;
  /// Whether an unsent step deletes a directory code from the unit.
  bool deletionStepExists = false;
  /// The answer to questions; notices are closed with OK.
  qorcred::MessageButton questionAnswer = qorcred::MessageButton::kNo;
};

/// The host under the transcript: components by programmatic identifier, message boxes, the clock.
class ScriptedHost final : public qorcred::Host {
 public:
  ScriptedHost(FaultGate& gate, ServiceScript& script, qorcred::ObjectRef connection);

  /// Components that somebody still holds.
  [[nodiscard]] int LiveComponents() const;
  /// Failures that operations trapped: operation and error number.
  [[nodiscard]] const std::vector<std::pair<std::string, qorcred::ErrorNumber>>& trapped() const {
    return trapped_;
  }
  void ForgetTrapped() { trapped_.clear(); }

  qorcred::ObjectRef CreateComponent(std::string_view programmaticId) override;
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override;
  qorcred::Date Now() override;
  void LetEventsRun() override;
  std::string DateText(qorcred::Date date) override;
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override;

 private:
  FaultGate& gate_;
  ServiceScript& script_;
  qorcred::ObjectRef connection_;
  std::vector<std::weak_ptr<qorcred::Object>> components_;
  std::vector<std::pair<std::string, qorcred::ErrorNumber>> trapped_;
};

}  // namespace qortest
