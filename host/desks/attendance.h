// Who answers what controllers show, and what is noted of it while an operation runs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/components/store_host.h"
#include "host/components/watched_manager.h"
#include "host/desks/outcome.h"
#include "host/store/store_connection.h"

namespace qorhost {

/// A message that a controller is about to show.
struct NewMessage {
  std::string text;
  qorcred::MessageStyle style = qorcred::MessageStyle::kNotice;
  std::string title;
};

/// What controllers have shown and what has failed.
struct OperationNotes {
  InsertHandler onInsert;  ///< told of every row that is inserted; may be empty
  std::vector<ShownMessage> messages;
  std::vector<std::string> failures;
  std::vector<std::string> trapped = {};  ///< those of them that controllers have trapped
  bool knowsWhyVoid = false;  ///< the failure that made the unit of work void is among them
};

/// The answers of an operation that runs again.
struct EarlierAnswers {
  std::vector<ShownMessage> answers;
  bool newQuestion = false;  ///< a question came up that was not asked before
};

using WaitingNotices = std::vector<NewMessage>;

/// Answers a session's messages, by the first of these rules that holds: none is shown any more
/// where the unit of work is void; one that was shown before gets the answer that it got; while
/// others wait for the end of what is locked, a question makes the unit of work void and a notice
/// waits; all others go to the message box. One thread.
class Attendance {
 public:
  /// Without a message box notices are closed with OK and questions answered No. The
  /// connection must outlive this.
  Attendance(MessageBox messageBox, StoreConnection& connection);
  Attendance(const Attendance&) = delete;
  Attendance& operator=(const Attendance&) = delete;

  qorcred::MessageButton Show(const NewMessage& message);
  /// Past the rules, to the message box.
  qorcred::MessageButton ShowAtOnce(const NewMessage& message) const;
  /// Noted unless nobody collects, or it comes of a failure that is noted already.
  void NoteFailure(std::string_view failure);
  /// The same of one that a controller has trapped, which may come of another one before it.
  void NoteTrapped(const std::string& failure);
  void NoteInsert(std::string_view table) const;

  // What holds from now on; each gives back what held before. Null: nothing. The classes of
  // operation_record.h and message_rules.h put them back at their end.
  OperationNotes* Collect(OperationNotes* notes);
  EarlierAnswers* Repeat(EarlierAnswers* answers);
  WaitingNotices* Hold(WaitingNotices* notices);
  struct Attendants {
    MessageBox messageBox;
    bool unattended = false;  ///< nobody sees a message: none has to wait
  };
  Attendants Replace(Attendants attendants);

 private:
  [[nodiscard]] qorcred::MessageButton AnswerTo(const NewMessage& message);
  [[nodiscard]] UnitOfWork& work() const { return connection_.session().work(); }

  Attendants attendants_;
  StoreConnection& connection_;
  OperationNotes* notes_ = nullptr;
  EarlierAnswers* earlier_ = nullptr;
  WaitingNotices* waiting_ = nullptr;
};

}  // namespace qorhost
