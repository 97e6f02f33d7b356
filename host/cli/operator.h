// The person at the screen: reads messages, answers questions; and what came of an operation.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/host.h"
#include "host/cli/console.h"

namespace qorhost {

/// What happened while an operation ran, beside its result.
struct OperationLog {
  int refusals = 0;                   ///< notices and refusals shown
  int questions = 0;                  ///< questions shown
  std::vector<std::string> failures;  ///< trapped failures and failed statements

  void Clear() { *this = {}; }
};

/// Shows the controllers' messages on standard error with title and icon word and answers their
/// questions: by `answer` when one is given, else by the person at the terminal, else No.
class Operator {
 public:
  Operator(Console& console, OperationLog& log, std::optional<bool> answer);

  qorcred::MessageButton Show(std::string_view text, qorcred::MessageStyle style,
                              std::string_view title);

 private:
  [[nodiscard]] bool AskAtTerminal();

  Console& console_;
  OperationLog& log_;
  std::optional<bool> answer_;
};

/// What an operation's result and log mean for the exit status: done only when it succeeded without
/// a failure or a refusal on the way. Failures are written to standard error.
[[nodiscard]] ExitStatus OutcomeOf(bool succeeded, const OperationLog& log, std::ostream& err);

}  // namespace qorhost
