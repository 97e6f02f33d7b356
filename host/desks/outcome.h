// What came of an operation at a desk.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "frame/host.h"
#include "host/store/audit_log.h"

namespace qorhost {

enum class Ending : std::uint8_t {
  kDone,
  kRefused,    ///< a controller said no, or something on the way; nothing was changed
  kFailed,     ///< a statement failed, or something was trapped; nothing was changed
  kStale,      ///< nothing was changed, because someone else was faster: StaleCause
  kCancelled,  ///< the progress handler stopped it; nothing of it is kept
  kUnknown,    ///< the server was lost while it was to store: nobody can tell whether it has
};

/// What an operation that ended stale would have overwritten.
enum class StaleCause : std::uint8_t {
  kUnknown,
  kRowChanged,
  kRowDeleted,
  kHolderChanged,  ///< who holds the row, or what is stored of those who do
  kTakerChanged,   ///< the tenant who was to hold it
  kNewQuestion,    ///< none of it, but the controller asks what nobody was asked
  kStoreReplaced,  ///< all of it: the session's store is not the one in its place any more
};

/// A message that a controller showed, and the button that closed it.
struct ShownMessage {
  std::string text;
  qorcred::MessageStyle style = qorcred::MessageStyle::kNotice;
  qorcred::MessageButton answer = qorcred::MessageButton::kOk;
  std::string title = {};
};

/// Operations that have more to tell derive their facts from it. All texts are as they came.
struct Outcome {
  Ending ending = Ending::kDone;
  /// What the controller's operation returned: some return True although they refused, with a
  /// message alone, or although a statement of theirs failed.
  bool returned = false;
  bool unchanged = false;              ///< done without the controller: the store has it so already
  std::vector<ShownMessage> messages;  ///< in their order
  std::vector<std::string> failures;   ///< failed statements and trapped failures, in their order
  StaleCause cause = StaleCause::kUnknown;  ///< of a stale one
  std::vector<WorkEntry> changes;           ///< of a stale one: by whom and what that was

  [[nodiscard]] bool done() const { return ending == Ending::kDone; }

  /// What is stored already needs no statement, and the unit no step.
  [[nodiscard]] static Outcome Unchanged() {
    Outcome same;
    same.returned = true;
    same.unchanged = true;
    return same;
  }
};

/// How an operation ends that has raised this: kUnknown, or else kFailed.
[[nodiscard]] Ending EndingBy(const std::exception& failure) noexcept;

/// Why nothing was done of an operation on `what` ("credential") that ended stale: "someone else
/// has changed the credential meanwhile".
[[nodiscard]] std::string StaleReason(StaleCause cause, std::string_view what);

/// The outcome alone, without the facts that come with it.
[[nodiscard]] inline Outcome WithoutFacts(const Outcome& outcome) {
  return outcome;
}

}  // namespace qorhost
