#include "host/desks/attendance.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace qorhost {

using qorcred::MessageButton;
using qorcred::MessageStyle;

Attendance::Attendance(MessageBox messageBox, StoreConnection& connection)
    : attendants_{std::move(messageBox)}, connection_(connection) {}

MessageButton Attendance::Show(const NewMessage& message) {
  if (work().voided() != VoidReason::kNone) {
    return UnseenAnswer(message.style);
  }
  const MessageButton answer = AnswerTo(message);
  if (notes_ != nullptr) {
    notes_->messages.push_back({message.text, message.style, answer, message.title});
  }
  return answer;
}

MessageButton Attendance::AnswerTo(const NewMessage& message) {
  if (earlier_ != nullptr) {
    std::vector<ShownMessage>& answers = earlier_->answers;
    const auto before =
        std::find_if(answers.begin(), answers.end(), [&message](const ShownMessage& shown) {
          return shown.style == message.style && shown.text == message.text;
        });
    if (before != answers.end()) {
      const MessageButton answer = before->answer;
      answers.erase(before);
      return answer;
    }
  }
  // Others wait for the end of what is locked: nobody is asked meanwhile.
  const bool othersWait = !attendants_.unattended && work().locked();
  if (othersWait && message.style == MessageStyle::kQuestion) {
    if (earlier_ != nullptr) {
      earlier_->newQuestion = true;
    }
    NoteFailure(fmt::format("nobody could be asked: {}", message.text));
    work().Void(VoidReason::kFailed);
    return UnseenAnswer(message.style);
  }
  if (othersWait && waiting_ != nullptr) {
    waiting_->push_back(message);
    return UnseenAnswer(message.style);
  }
  return ShowAtOnce(message);
}

MessageButton Attendance::ShowAtOnce(const NewMessage& message) const {
  return attendants_.messageBox ? attendants_.messageBox(message.text, message.style, message.title)
                                : UnseenAnswer(message.style);
}

void Attendance::NoteFailure(std::string_view failure) {
  if (notes_ == nullptr) {
    return;
  }
  // What fails behind the first failed write fails because of that.
  const bool isVoid = work().voided() != VoidReason::kNone;
  if (!isVoid || !std::exchange(notes_->knowsWhyVoid, true)) {
    notes_->failures.emplace_back(failure);
  }
}

void Attendance::NoteTrapped(const std::string& failure) {
  if (notes_ != nullptr) {
    notes_->trapped.push_back(failure);
  }
  NoteFailure(failure);
}

void Attendance::NoteInsert(std::string_view table) const {
  if (notes_ != nullptr && notes_->onInsert) {
    notes_->onInsert(table);
  }
}

OperationNotes* Attendance::Collect(OperationNotes* notes) {
  return std::exchange(notes_, notes);
}

EarlierAnswers* Attendance::Repeat(EarlierAnswers* answers) {
  return std::exchange(earlier_, answers);
}

WaitingNotices* Attendance::Hold(WaitingNotices* notices) {
  return std::exchange(waiting_, notices);
}

Attendance::Attendants Attendance::Replace(Attendants attendants) {
  return std::exchange(attendants_, std::move(attendants));
}

}  // namespace qorhost
