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
  console.stale = true;
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
  const bool asks = style == MessageStyle::kQuestion;
  const bool isCollected = console_.live != nullptr;
  // A person who is asked has to read what.
  const bool isAsked =
      asks && !answer_ && trial_ == Trial::kNo && console_.environment.inputIsTerminal;
  if (!isCollected || isAsked) {
    console_.Live() << fmt::format("{} [{}]: {}\n", Displayable(title), IconWord(style),
                                   Displayable(text));
  }
  const bool yes = asks && Answer();
  if (isCollected) {
    console_.messages.push_back(
        {std::string(title), IconWord(style), std::string(text), asks ? (yes ? "yes" : "no") : ""});
  }
  if (!asks) {
    return MessageButton::kOk;
  }
  return yes ? MessageButton::kYes : MessageButton::kNo;
}

bool Operator::Answer() {
  if (answer_) {
    console_.err << (*answer_ ? "Answered Yes by --yes.\n" : "Answered No by --no.\n");
    return *answer_;
  }
  if (trial_ == Trial::kYes) {
    console_.err << "Taken as Yes: this is a trial.\n";
    return true;
  }
  if (console_.environment.inputIsTerminal) {
    return AskAtTerminal();
  }
  console_.err << "Answered No: there is no terminal to ask at. Say --yes to answer Yes.\n";
  return false;
}

bool Operator::Asks(std::string_view question) {
  return Show(question, MessageStyle::kQuestion, "qorhost") == MessageButton::kYes;
}

bool Operator::AskAtTerminal() {
  std::string line;
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    console_.Live() << "Yes or No? [y/n] " << std::flush;
    if (!std::getline(console_.in, line)) {
      console_.Live() << '\n';
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
  console_.Live() << "Taken as No.\n";
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
    if (message.style == MessageStyle::kQuestion) {
      continue;
    }
    if (console.live != nullptr) {
      console.messages.push_back({message.title, IconWord(message.style), message.text, ""});
    } else {
      console.err << fmt::format("qorhost: {}: {}\n", Displayable(outcome.subject),
                                 Displayable(message.text));
    }
  }
  const ExitStatus status = Tell(static_cast<const Outcome&>(outcome), what, console);
  if (!outcome.done() && outcome.ending != Ending::kUnknown) {
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
    case Ending::kUnknown:
      return ExitStatus::kUnknown;
    case Ending::kRefused:
    case Ending::kStale:
    case Ending::kCancelled:
      break;
  }
  return ExitStatus::kRefused;
}

}  // namespace qorhost
