// The person at the terminal: reads messages, answers questions, is told how an operation ended.
#pragma once

#include <optional>
#include <string_view>

#include "frame/host.h"
#include "host/desks/outcome.h"
#include "host/desks/several.h"
#include "host/desks/trial.h"
#include "host/terminal/console.h"

namespace qorhost {

/// Shows the controllers' messages on standard error with title and icon word and answers their
/// questions: by `answer` when one is given, else by the person at the terminal, else No.
class Operator {
 public:
  /// In a trial questions are taken as answered Yes unless `answer` says No.
  Operator(Console& console, std::optional<bool> answer, Trial trial = Trial::kNo);

  qorcred::MessageButton Show(std::string_view text, qorcred::MessageStyle style,
                              std::string_view title);
  /// Asks a question of the host's own, as the controllers' are asked. True for Yes.
  [[nodiscard]] bool Asks(std::string_view question);

 private:
  [[nodiscard]] bool Answer();
  [[nodiscard]] bool AskAtTerminal();

  Console& console_;
  std::optional<bool> answer_;
  Trial trial_;
};

[[nodiscard]] ExitStatus StatusOf(Ending ending);

/// The exit status of an operation on `what` ("credential"). Its failures are written to standard
/// error, and who was faster where somebody was.
ExitStatus Tell(const Outcome& outcome, std::string_view what, Console& console);
/// The same of an operation that changes the store.
ExitStatus TellChange(const Outcome& outcome, std::string_view what, Console& console);
/// The same of several, with the messages about the one that was not done.
ExitStatus TellSeveral(const SeveralOutcome& outcome, std::string_view what, Console& console);

}  // namespace qorhost
