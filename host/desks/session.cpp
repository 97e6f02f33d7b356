#include "host/desks/session.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "frame/convert.h"
#include "frame/siblings.h"
#include "host/desks/desk_error.h"
#include "host/store/observed_store.h"

namespace qorhost {

using qorcred::MessageButton;
using qorcred::MessageStyle;

DeskSession::DeskSession(std::unique_ptr<Store> store, Surroundings surroundings)
    : surroundings_(std::move(surroundings)),
      tracer_(surroundings_.trace ? std::make_shared<qorcred::trace::Tracer>(surroundings_.trace)
                                  : nullptr),
      connection_(
          std::make_shared<StoreConnection>(Watched(std::move(store)), surroundings_.clock)),
      storeHost_(MakeServices()) {
  connection_->store().SetPatience(surroundings_.patience);
  sql().work().SignAs(surroundings_.author);
  if (tracer_ != nullptr) {
    tracedHost_ = std::make_unique<qorcred::trace::TracedHost>(storeHost_, tracer_);
  }
}

std::unique_ptr<Store> DeskSession::Watched(std::unique_ptr<Store> store) {
  if (tracer_ == nullptr) {
    return store;
  }
  return Observed(std::move(store), [this](std::string_view statement, std::int64_t rows,
                                           const std::exception* failure) {
    if (tracer_->inStatement()) {
      return;  // the controller's own, which stands in the trace already
    }
    const std::string text = "host " + qorcred::trace::SpelledText(statement);
    tracer_->Note(failure == nullptr
                      ? fmt::format("{} -> {} {}", text, rows, rows == 1 ? "row" : "rows")
                      : fmt::format("{} ! {}", text, qorcred::trace::SpelledText(failure->what())));
  });
}

StoreHost::Services DeskSession::MakeServices() {
  StoreHost::Services services;
  services.clock = surroundings_.clock;
  services.messageBox = [this](std::string_view text, MessageStyle style, std::string_view title) {
    return ShowMessage(text, style, title);
  };
  services.failureLog = [this](std::string_view operation, const qorcred::RuntimeError& failure) {
    if (failure.number() == qorcred::ErrorNumber::kApplicationDefined) {
      NoteFailure(failure.description());  // the store's own words, as statements have them
      return;
    }
    NoteFailure(fmt::format("{} failed: {} (error {})", operation, failure.description(),
                            static_cast<int>(failure.number())));
  };
  const ComponentRegistry components = services.components;
  services.components.Register(qorcred::component::kDatabaseManager, [this, components] {
    return std::make_shared<WatchedManager>(
        components.Create(qorcred::component::kDatabaseManager),
        [this](std::string_view errorText) { NoteFailure(errorText); },
        [this](std::string_view table) {
          if (record_ != nullptr && record_->onInsert_) {
            record_->onInsert_(table);
          }
        });
  });
  return services;
}

MessageButton DeskSession::ShowMessage(std::string_view text, MessageStyle style,
                                       std::string_view title) {
  if (sql().work().voided() != VoidReason::kNone) {
    return UnseenAnswer(style);
  }
  const MessageButton answer = AnswerTo({text, style, title});
  if (record_ != nullptr) {
    record_->messages_.push_back({std::string(text), style, answer});
  }
  return answer;
}

MessageButton DeskSession::AnswerTo(const NewMessage& message) {
  if (answered_ != nullptr) {
    const auto before =
        std::find_if(answered_->answers_.begin(), answered_->answers_.end(),
                     [&message](const ShownMessage& shown) {
                       return shown.style == message.style && shown.text == message.text;
                     });
    if (before != answered_->answers_.end()) {
      const MessageButton answer = before->answer;
      answered_->answers_.erase(before);
      return answer;
    }
  }
  // Others wait for the end of what is locked: nobody is asked meanwhile.
  const bool othersWait = !unattended_ && sql().work().locked();
  if (othersWait && message.style == MessageStyle::kQuestion) {
    if (answered_ != nullptr) {
      answered_->newQuestion_ = true;
    }
    NoteFailure(fmt::format("nobody could be asked: {}", message.text));
    sql().work().Void(VoidReason::kFailed);
    return UnseenAnswer(message.style);
  }
  if (othersWait && notices_ != nullptr) {
    notices_->waiting_.push_back(
        {std::string(message.text), message.style, std::string(message.title)});
    return UnseenAnswer(message.style);
  }
  return surroundings_.messageBox
             ? surroundings_.messageBox(message.text, message.style, message.title)
             : UnseenAnswer(message.style);
}

void DeskSession::NoteFailure(std::string_view failure) {
  if (record_ == nullptr) {
    return;
  }
  // What fails behind the first failed write fails because of that.
  const bool isVoid = sql().work().voided() != VoidReason::kNone;
  if (!isVoid || !std::exchange(record_->knowsWhyVoid_, true)) {
    record_->failures_.emplace_back(failure);
  }
}

qorcred::Host& DeskSession::host() {
  return tracedHost_ != nullptr ? *tracedHost_ : ownHost();
}

std::vector<UnitName> DeskSession::Units() {
  const QueryResult result = sql().Select("SELECT UnitKey, UnitName FROM Units ORDER BY UnitKey");
  std::vector<UnitName> units;
  for (const ResultRow row : result.rows()) {
    units.push_back({qorcred::ToLong(row[0]), qorcred::TextOrEmpty(row[1])});
  }
  return units;
}

UnseenMessages::UnseenMessages(DeskSession& session, bool answerYes)
    : session_(session),
      former_(std::move(session.surroundings_.messageBox)),
      formerlyUnattended_(std::exchange(session.unattended_, true)) {
  session_.surroundings_.messageBox = [answerYes](std::string_view, MessageStyle style,
                                                  std::string_view) {
    const bool agreed = answerYes && style == MessageStyle::kQuestion;
    return agreed ? MessageButton::kYes : UnseenAnswer(style);
  };
}

UnseenMessages::~UnseenMessages() {
  session_.surroundings_.messageBox = std::move(former_);
  session_.unattended_ = formerlyUnattended_;
}

AnsweredAgain::AnsweredAgain(DeskSession& session, std::vector<ShownMessage> answers)
    : session_(session), answers_(std::move(answers)) {
  session_.answered_ = this;
}

AnsweredAgain::~AnsweredAgain() {
  session_.answered_ = nullptr;
}

NoticesAtTheEnd::NoticesAtTheEnd(DeskSession& session)
    : session_(session), previous_(std::exchange(session.notices_, this)) {}

NoticesAtTheEnd::~NoticesAtTheEnd() {
  session_.notices_ = previous_;
}

void NoticesAtTheEnd::Show() {
  for (const Notice& notice : std::exchange(waiting_, {})) {
    if (session_.surroundings_.messageBox) {
      session_.surroundings_.messageBox(notice.text, notice.style, notice.title);
    }
  }
}

OperationRecord::OperationRecord(DeskSession& session, InsertHandler onInsert)
    : session_(session),
      previous_(std::exchange(session.record_, this)),
      onInsert_(std::move(onInsert)) {}

OperationRecord::~OperationRecord() {
  session_.record_ = previous_;
}

void OperationRecord::RequireNoFailure(std::string_view doing, std::string_view addition) const {
  if (!failures_.empty()) {
    throw FailureError(fmt::format("cannot {}: {}{}", doing, failures_.front(), addition));
  }
}

void OperationRecord::ForgiveFirstFailure(bool stored) {
  const bool wentOn = stored || !messages_.empty() || failures_.size() > 1;
  if (!failures_.empty() && wentOn) {
    failures_.erase(failures_.begin());
  }
}

Outcome OperationRecord::End(bool returned) {
  Outcome outcome;
  outcome.returned = returned;
  outcome.messages = std::move(messages_);
  outcome.failures = std::move(failures_);
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
