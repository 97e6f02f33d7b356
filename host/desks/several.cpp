#include "host/desks/several.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/desks/message_rules.h"

namespace qorhost {

namespace {

/// Does all of them inside an open unit of work.
SeveralOutcome DoAll(const SeveralOperations& operations, OpenQuestions& questions) {
  const std::size_t count = operations.begin();
  SeveralOutcome all;
  all.returned = true;
  all.unchanged = true;
  for (std::size_t at = 0; at < count; ++at) {
    const PartOutcome part = operations.run(at, questions);
    if (!part.done()) {
      SeveralOutcome undone;
      undone.subject = part.subject;
      static_cast<Outcome&>(undone) = WithoutFacts(part);
      undone.unchanged = false;
      return undone;
    }
    for (const ShownMessage& message : part.messages) {
      if (message.style == qorcred::MessageStyle::kQuestion) {
        questions.Add(part.subject, message.text);
      }
    }
    all.unchanged = all.unchanged && part.unchanged;
  }
  if (operations.end) {
    operations.end();
  }
  return all;
}

}  // namespace

void OpenQuestions::Add(std::string_view subject, std::string_view question) {
  const auto same = std::find_if(asked_.begin(), asked_.end(), [question](const Asked& asked) {
    return asked.question == question;
  });
  Asked& asked =
      same != asked_.end() ? *same : asked_.emplace_back(Asked{std::string(question), {}});
  asked.subjects.emplace_back(subject);
}

std::string OpenQuestions::Text() const {
  std::string text;
  for (const Asked& asked : asked_) {
    text += fmt::format("{}{}: {}", text.empty() ? "" : " ", fmt::join(asked.subjects, ", "),
                        asked.question);
  }
  return text;
}

SeveralOutcome RunSeveral(DeskSession& session, const WorkOrder& order,
                          const SeveralOperations& operations, const Consent& consent) {
  constexpr bool kAnswerYes = true;
  OpenQuestions agreed;
  while (true) {
    OpenQuestions questions;
    {
      const UnseenMessages unseen(session, kAnswerYes);
      WorkGuard guard(session.sql().work(), order);
      session.sql().work().Lock();
      SeveralOutcome all = DoAll(operations, questions);
      if (!all.done() || questions == agreed) {
        if (all.done()) {
          guard.Commit();
        }
        return all;
      }
    }
    // It may be about other rows by the time it is answered: then it is asked again.
    if (!consent(questions.Text())) {
      SeveralOutcome refused;
      refused.ending = Ending::kRefused;
      return refused;
    }
    agreed = std::move(questions);
  }
}

}  // namespace qorhost
