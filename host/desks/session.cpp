#include "host/desks/session.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "frame/convert.h"
#include "frame/siblings.h"
#include "host/desks/desk_error.h"
#include "trace/tracing_services.h"

namespace qorhost {

using qorcred::MessageButton;
using qorcred::MessageStyle;
using qorcred::ObjectRef;

DeskSession::DeskSession(std::unique_ptr<Store> store, Surroundings surroundings)
    : surroundings_(std::move(surroundings)),
      connection_(std::make_shared<StoreConnection>(std::move(store), surroundings_.clock)),
      visibleConnection_(connection_),
      storeHost_(MakeServices()) {
  if (surroundings_.transcript) {
    visibleConnection_ =
        std::make_shared<qorcred::trace::TracingConnection>(connection_, surroundings_.transcript);
    tracingHost_ =
        std::make_unique<qorcred::trace::TracingHost>(storeHost_, surroundings_.transcript);
  }
}

StoreHost::Services DeskSession::MakeServices() {
  StoreHost::Services services;
  services.clock = surroundings_.clock;
  services.messageBox = [this](std::string_view text, MessageStyle style, std::string_view title) {
    return ShowMessage(text, style, title);
  };
  services.failureLog = [this](std::string_view operation, const qorcred::RuntimeError& failure) {
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
  MessageButton answer = style == MessageStyle::kQuestion ? MessageButton::kNo : MessageButton::kOk;
  if (surroundings_.messageBox) {
    answer = surroundings_.messageBox(text, style, title);
  }
  if (record_ != nullptr) {
    record_->messages_.push_back({std::string(text), style, answer});
  }
  return answer;
}

void DeskSession::NoteFailure(std::string_view failure) {
  if (record_ != nullptr) {
    record_->failures_.emplace_back(failure);
  }
}

qorcred::Host& DeskSession::host() {
  if (tracingHost_ != nullptr) {
    return *tracingHost_;
  }
  return storeHost_;
}

ObjectRef DeskSession::Visible(const std::shared_ptr<ScreenModel>& screen) const {
  if (!surroundings_.transcript) {
    return screen;
  }
  return std::make_shared<qorcred::trace::TracingScreen>(
      screen, surroundings_.transcript,
      [model = screen.get()](std::string_view name) { return model->SpelledName(name); });
}

ObjectRef DeskSession::Visible(std::string name, ObjectRef object) const {
  if (!surroundings_.transcript) {
    return object;
  }
  return std::make_shared<qorcred::trace::TracingControl>(std::move(name), std::move(object),
                                                          surroundings_.transcript);
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
    : session_(session), former_(std::move(session.surroundings_.messageBox)) {
  session_.surroundings_.messageBox = [answerYes](std::string_view, MessageStyle style,
                                                  std::string_view) {
    if (style != MessageStyle::kQuestion) {
      return MessageButton::kOk;
    }
    return answerYes ? MessageButton::kYes : MessageButton::kNo;
  };
}

UnseenMessages::~UnseenMessages() {
  session_.surroundings_.messageBox = std::move(former_);
}

OperationRecord::OperationRecord(DeskSession& session, InsertHandler onInsert)
    : session_(session),
      previous_(std::exchange(session.record_, this)),
      onInsert_(std::move(onInsert)) {}

OperationRecord::~OperationRecord() {
  session_.record_ = previous_;
}

void OperationRecord::RequireNoFailure(std::string_view doing) const {
  if (!failures_.empty()) {
    throw FailureError(fmt::format("cannot {}: {}", doing, failures_.front()));
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
