#include "host/cli/operator.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "frame/text.h"
#include "host/terminal/display_text.h"

namespace qorhost {

using qorcred::MessageButton;
using qorcred::MessageStyle;

namespace {

constexpr int kMostAttempts = 5;

std::string_view IconWord(MessageStyle style) {
  return style == MessageStyle::kNotice ? "information" : "exclamation";
}

bool IsWord(std::string_view text, std::string_view letter, std::string_view word) {
  return qorcred::CompareIgnoringCase(text, letter) == 0 ||
         qorcred::CompareIgnoringCase(text, word) == 0;
}

void TellStale(std::string_view what, const Outcome& outcome, Console& console) {
  constexpr std::size_t kMostChanges = 5;
  console.err << fmt::format("qorhost: nothing was changed: {}. Try again.\n",
                             StaleReason(outcome.cause, what));
  const std::vector<WorkEntry>& changes = outcome.changes;
  const std::size_t first = changes.size() > kMostChanges ? changes.size() - kMostChanges : 0;
  for (std::size_t at = first; at < changes.size(); ++at) {
    const WorkEntry& change = changes[at];
    console.err << fmt::format("  {} UTC, {}: {}\n", Displayable(change.at),
                               change.who.empty() ? "somebody" : Displayable(change.who),
                               Displayable(change.what));
  }
}

}  // namespace

Operator::Operator(Console& console, std::optional<bool> answer, Trial trial)
    : console_(console), answer_(answer), trial_(trial) {}

MessageButton Operator::Show(std::string_view text, MessageStyle style, std::string_view title) {
  console_.err << fmt::format("{} [{}]: {}\n", Displayable(title), IconWord(style),
                              Displayable(text));
  if (style != MessageStyle::kQuestion) {
    return MessageButton::kOk;
  }
  bool yes = false;
  if (answer_) {
    yes = *answer_;
    console_.err << (yes ? "Answered Yes by --yes.\n" : "Answered No by --no.\n");
  } else if (trial_ == Trial::kYes) {
    yes = true;
    console_.err << "Taken as Yes: this is a trial.\n";
  } else if (console_.environment.inputIsTerminal) {
    yes = AskAtTerminal();
  } else {
    console_.err << "Answered No: there is no terminal to ask at. Say --yes to answer Yes.\n";
  }
  return yes ? MessageButton::kYes : MessageButton::kNo;
}

bool Operator::Asks(std::string_view question) {
  return Show(question, MessageStyle::kQuestion, "qorhost") == MessageButton::kYes;
}

bool Operator::AskAtTerminal() {
  std::string line;
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    console_.err << "Yes or No? [y/n] " << std::flush;
    if (!std::getline(console_.in, line)) {
      console_.err << '\n';
      return false;
    }
    line.erase(std::remove(line.begin(), line.end(), '\r'), line.end());
    const std::string_view word = qorcred::Trim(line);
    if (IsWord(word, "y", "yes")) {
      return true;
    }
    if (IsWord(word, "n", "no")) {
      return false;
    }
  }
  console_.err << "Taken as No.\n";
  return false;
}

ExitStatus Tell(const Outcome& outcome, std::string_view what, Console& console) {
  for (const std::string& failure : outcome.failures) {
    console.err << "qorhost: " << Displayable(failure) << '\n';
  }
  if (outcome.ending == Ending::kStale) {
    TellStale(what, outcome, console);
  }
  return StatusOf(outcome.ending);
}

ExitStatus TellSeveral(const SeveralOutcome& outcome, std::string_view what, Console& console) {
  for (const ShownMessage& message : outcome.messages) {
    if (message.style != MessageStyle::kQuestion) {
      console.err << fmt::format("qorhost: {}: {}\n", Displayable(outcome.subject),
                                 Displayable(message.text));
    }
  }
  const ExitStatus status = Tell(static_cast<const Outcome&>(outcome), what, console);
  if (!outcome.done()) {
    console.err << (outcome.subject.empty()
                        ? std::string("qorhost: nothing was changed.\n")
                        : fmt::format("qorhost: {} was not done, so nothing was changed.\n",
                                      Displayable(outcome.subject)));
  }
  console.stored = console.stored || (outcome.done() && !outcome.unchanged);
  return status;
}

ExitStatus TellChange(const Outcome& outcome, std::string_view what, Console& console) {
  console.stored = console.stored || (outcome.done() && !outcome.unchanged);
  return Tell(outcome, what, console);
}

ExitStatus StatusOf(Ending ending) {
  switch (ending) {
    case Ending::kDone:
      return ExitStatus::kDone;
    case Ending::kFailed:
      return ExitStatus::kFailure;
    case Ending::kRefused:
    case Ending::kStale:
    case Ending::kCancelled:
      break;
  }
  return ExitStatus::kRefused;
}

}  // namespace qorhost
