#include "host/desks/operation_record.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/desks/desk_error.h"

namespace qorhost {

using qorcred::MessageStyle;

namespace {

bool Holds(const std::vector<std::string>& texts, const std::string& text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/// Each once, and what controllers have trapped where nothing else had failed before: they go on
/// with rows that nobody could read.
std::vector<std::string> ToTell(const OperationNotes& notes) {
  std::vector<std::string> told;
  bool hasCause = false;
  for (const std::string& failure : notes.failures) {
    const bool isTrapped = Holds(notes.trapped, failure);
    if (!(isTrapped && hasCause) && !Holds(told, failure)) {
      told.push_back(failure);
    }
    hasCause = hasCause || !isTrapped;
  }
  return told;
}

}  // namespace

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
  outcome.failures = ToTell(notes_);
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
