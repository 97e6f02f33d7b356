// Other ways to answer what controllers show, each for as long as an object lives. The session must
// outlive it.
#pragma once

#include <vector>

#include "host/desks/session.h"

namespace qorhost {

/// Messages are shown to nobody: notices are closed with OK, questions answered so.
class UnseenMessages {
 public:
  UnseenMessages(DeskSession& session, bool answerYes);
  ~UnseenMessages();
  UnseenMessages(const UnseenMessages&) = delete;
  UnseenMessages& operator=(const UnseenMessages&) = delete;

 private:
  Attendance& attendance_;
  Attendance::Attendants former_;
};

/// Messages that were shown before get the answers that they got; a question that was not asked
/// before makes the unit of work void.
class AnsweredAgain {
 public:
  AnsweredAgain(DeskSession& session, std::vector<ShownMessage> answers);
  ~AnsweredAgain();
  AnsweredAgain(const AnsweredAgain&) = delete;
  AnsweredAgain& operator=(const AnsweredAgain&) = delete;

  [[nodiscard]] bool newQuestion() const { return answers_.newQuestion; }

 private:
  Attendance& attendance_;
  EarlierAnswers answers_;
};

/// Notices that come up while others wait are answered at once, to be shown when nobody waits any
/// more.
class NoticesAtTheEnd {
 public:
  explicit NoticesAtTheEnd(DeskSession& session);
  ~NoticesAtTheEnd();
  NoticesAtTheEnd(const NoticesAtTheEnd&) = delete;
  NoticesAtTheEnd& operator=(const NoticesAtTheEnd&) = delete;

  void Show();

 private:
  Attendance& attendance_;
  WaitingNotices waiting_;
  WaitingNotices* previous_;
};

}  // namespace qorhost
