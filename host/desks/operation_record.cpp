#include "host/desks/operation_record.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/desks/desk_error.h"

namespace qorhost {

using qorcred::MessageStyle;

OperationRecord::OperationRecord(DeskSession& session, InsertHandler onInsert)
    : attendance_(session.attendance()),
      notes_{std::move(onInsert), {}, {}},
      previous_(attendance_.Collect(&notes_)) {}

OperationRecord::~OperationRecord() {
  attendance_.Collect(previous_);
}

void OperationRecord::RequireNoFailure(std::string_view doing, std::string_view addition) const {
  if (!notes_.failures.empty()) {
    throw FailureError(fmt::format("cannot {}: {}{}", doing, notes_.failures.front(), addition));
  }
}

void OperationRecord::ForgiveFirstFailure(bool stored) {
  const bool wentOn = stored || !notes_.messages.empty() || notes_.failures.size() > 1;
  if (!notes_.failures.empty() && wentOn) {
    notes_.failures.erase(notes_.failures.begin());
  }
}

Outcome OperationRecord::End(bool returned) {
  Outcome outcome;
  outcome.returned = returned;
  outcome.messages = std::move(notes_.messages);
  outcome.failures = std::move(notes_.failures);
  const bool refused = std::any_of(
      outcome.messages.begin(), outcome.messages.end(),
      [](const ShownMessage& message) { return message.style != MessageStyle::kQuestion; });
  if (!outcome.failures.empty()) {
    outcome.ending = Ending::kFailed;
  } else if (!returned || refused) {
    outcome.ending = Ending::kRefused;
  }
  return outcome;
}

}  // namespace qorhost
