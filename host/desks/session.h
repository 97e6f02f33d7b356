// A store opened for work at desks, and the host that controllers see on it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "host/components/store_host.h"
#include "host/components/watched_manager.h"
#include "host/desks/outcome.h"
#include "host/screens/screen_model.h"
#include "host/store/store_connection.h"
#include "trace/traced_controller.h"
#include "trace/traced_host.h"

namespace qorhost {

class AnsweredAgain;
class NoticesAtTheEnd;
class OperationRecord;

/// A message that a controller is about to show.
struct NewMessage {
  std::string_view text;
  qorcred::MessageStyle style;
  std::string_view title;
};

/// What a front end hands in. Everything may be left out.
struct Surroundings {
  MessageBox messageBox;  ///< none: notices are closed with OK, questions answered No
  Clock clock = SystemClock();
  Author author;                    ///< signs what is stored
  Patience patience;                ///< with others who write
  qorcred::trace::TraceSink trace;  ///< none: nothing is traced
};

struct UnitName {
  std::int32_t key = 0;
  std::string name;
};

/// A controller as a desk holds it.
template <typename Class>
using Controlled = qorcred::trace::TracedController<Class>;

/// Keeps everything that controllers need alive: the connection, and the host, behind its decorator
/// when there is a trace. One thread.
class DeskSession {
 public:
  DeskSession(std::unique_ptr<Store> store, Surroundings surroundings);
  DeskSession(const DeskSession&) = delete;
  DeskSession& operator=(const DeskSession&) = delete;

  /// The host and connection to hand to controllers.
  [[nodiscard]] qorcred::Host& host();
  /// The host for what a desk does itself: that is no call of a controller's.
  [[nodiscard]] qorcred::Host& ownHost() { return storeHost_; }
  [[nodiscard]] qorcred::ObjectRef connection() const { return connection_; }
  /// Writes the trace; null without one.
  [[nodiscard]] const std::shared_ptr<qorcred::trace::Tracer>& tracer() const { return tracer_; }

  /// The store for what a desk asks itself: statements of the host's own in a trace.
  [[nodiscard]] SqlSession& sql() { return connection_->session(); }
  [[nodiscard]] qorcred::Date Today() { return qorcred::DayOf(surroundings_.clock()); }
  [[nodiscard]] std::vector<UnitName> Units();

 private:
  friend class OperationRecord;
  friend class UnseenMessages;
  friend class AnsweredAgain;
  friend class NoticesAtTheEnd;

  [[nodiscard]] StoreHost::Services MakeServices();
  [[nodiscard]] std::unique_ptr<Store> Watched(std::unique_ptr<Store> store);
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title);
  [[nodiscard]] qorcred::MessageButton AnswerTo(const NewMessage& message);
  void NoteFailure(std::string_view failure);

  Surroundings surroundings_;
  OperationRecord* record_ = nullptr;   // of the operation under way
  AnsweredAgain* answered_ = nullptr;   // of one that runs again
  NoticesAtTheEnd* notices_ = nullptr;  // those that wait for the end
  bool unattended_ = false;             // all messages are answered without being shown
  std::shared_ptr<qorcred::trace::Tracer> tracer_;
  std::shared_ptr<StoreConnection> connection_;
  StoreHost storeHost_;
  std::unique_ptr<qorcred::trace::TracedHost> tracedHost_;
};

/// While it lives, messages are shown to nobody: notices are closed with OK, questions answered so.
/// The session must outlive it.
class UnseenMessages {
 public:
  UnseenMessages(DeskSession& session, bool answerYes);
  ~UnseenMessages();
  UnseenMessages(const UnseenMessages&) = delete;
  UnseenMessages& operator=(const UnseenMessages&) = delete;

 private:
  DeskSession& session_;
  MessageBox former_;
  bool formerlyUnattended_;
};

/// While it lives, messages that were shown before get the answers that they got; a question that
/// was not asked before makes the unit of work stale.
class AnsweredAgain {
 public:
  AnsweredAgain(DeskSession& session, std::vector<ShownMessage> answers);
  ~AnsweredAgain();
  AnsweredAgain(const AnsweredAgain&) = delete;
  AnsweredAgain& operator=(const AnsweredAgain&) = delete;

  [[nodiscard]] bool newQuestion() const { return newQuestion_; }

 private:
  friend class DeskSession;

  DeskSession& session_;
  std::vector<ShownMessage> answers_;
  bool newQuestion_ = false;
};

/// While it lives, notices that come up while others wait are answered at once, to be shown when
/// nobody waits any more.
class NoticesAtTheEnd {
 public:
  explicit NoticesAtTheEnd(DeskSession& session);
  ~NoticesAtTheEnd();
  NoticesAtTheEnd(const NoticesAtTheEnd&) = delete;
  NoticesAtTheEnd& operator=(const NoticesAtTheEnd&) = delete;

  void Show();

 private:
  friend class DeskSession;

  struct Notice {
    std::string text;
    qorcred::MessageStyle style;
    std::string title;
  };

  DeskSession& session_;
  NoticesAtTheEnd* previous_;
  std::vector<Notice> waiting_;
};

/// Collects, while it lives, what the controllers show and what fails: one for each operation. The
/// session must outlive it; of several the latest collects.
class OperationRecord {
 public:
  /// `onInsert` is told of every row that is inserted meanwhile. What it raises, the insert raises.
  explicit OperationRecord(DeskSession& session, InsertHandler onInsert = nullptr);
  ~OperationRecord();
  OperationRecord(const OperationRecord&) = delete;
  OperationRecord& operator=(const OperationRecord&) = delete;

  [[nodiscard]] const std::vector<std::string>& failures() const { return failures_; }
  /// Raises FailureError with the first failure, if there is one: "cannot `doing`: ...`addition`".
  void RequireNoFailure(std::string_view doing, std::string_view addition = {}) const;
  /// Leaves the first failure out, when the operation went on behind it: it stored something, a
  /// message was shown, or more has failed.
  void ForgiveFirstFailure(bool stored);
  /// What the operation came to, which returned `returned`: done only when it succeeded without a
  /// failure or a refusal on the way.
  [[nodiscard]] Outcome End(bool returned);

 private:
  friend class DeskSession;

  DeskSession& session_;
  OperationRecord* previous_;
  InsertHandler onInsert_;
  std::vector<ShownMessage> messages_;
  std::vector<std::string> failures_;
  bool knowsWhyVoid_ = false;
};

}  // namespace qorhost
